#include "host/diff/tree_diff.h"

#include <boost/filesystem/operations.hpp>
#include <utility>

#include "host/diff/file_diff.h"
#include "host/json_string.h"
#include "host/system.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

bool isThere(fs::file_type type) {
  return type != fs::file_not_found;
}

fs::file_type typeOf(const fs::path& path) {
  boost::system::error_code error;
  const fs::file_type type = fs::symlink_status(path, error).type();
  if (type == fs::status_error) {
    throw std::runtime_error(path.generic_string() +
                             " cannot be read: " + system::errorText(error));
  }
  return type;
}

// Returns the words for an entry; absent when there is none.
std::optional<Lines> wordsFor(const fs::path& path, fs::file_type type) {
  switch (type) {
    case fs::file_not_found:
      return std::nullopt;
    case fs::regular_file:
      return Lines{"a file of " + std::to_string(fs::file_size(path)) + " bytes"};
    case fs::directory_file:
      return Lines{"a folder"};
    case fs::symlink_file:
      return Lines{"a link to " + shownText(jsonString(fs::read_symlink(path)).asString())};
    default:
      return Lines{"neither a file nor a folder"};
  }
}

void addNames(const fs::path& folder, std::set<std::string>& names) {
  if (!isThere(typeOf(folder))) return;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    names.insert(entry.path().filename().string());
  }
}

void diffFiles(const fs::path& left, const fs::path& right, const std::string& place,
               const FoldersOfRuns& texts, DiffReport& report) {
  report.countFile();
  auto difference = fileDifference(left, right, texts);
  if (!difference) return;
  difference->place = place + difference->place;
  report.add(std::move(*difference));
}

}  // namespace

std::set<std::string> namesInBoth(const ComparedFolders& folders) {
  std::set<std::string> names;
  addNames(folders.left, names);
  addNames(folders.right, names);
  return names;
}

void diffEntry(const ComparedFolders& folders, const std::string& name, const FoldersOfRuns& texts,
               DiffReport& report) {
  if (report.isEnough()) return;
  const fs::path left = folders.left / name;
  const fs::path right = folders.right / name;
  const std::string place = folders.title + jsonString(name).asString();
  if (folders.skipped.count(place) > 0) return;
  const fs::file_type ofLeft = typeOf(left);
  const fs::file_type ofRight = typeOf(right);
  if (ofLeft != ofRight) {
    report.add({place, wordsFor(left, ofLeft), wordsFor(right, ofRight)});
  } else if (ofLeft == fs::directory_file) {
    const ComparedFolders inner{left, right, place + "/", folders.skipped};
    for (const std::string& each : namesInBoth(inner)) diffEntry(inner, each, texts, report);
  } else if (ofLeft == fs::regular_file) {
    diffFiles(left, right, place, texts, report);
  } else if (ofLeft == fs::symlink_file &&
             !texts.isSame(fs::read_symlink(left).generic_string(),
                           fs::read_symlink(right).generic_string())) {
    report.add({place, wordsFor(left, ofLeft), wordsFor(right, ofRight)});
  }
}

}  // namespace libvarrow::host
