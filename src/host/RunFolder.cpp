#include "host/RunFolder.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/filesystem/operations.hpp>
#include <cstdio>
#include <set>
#include <stdexcept>
#include <vector>

#include "host/RunRecord.h"
#include "host/one_line.h"
#include "host/run_file_names.h"
#include "host/system.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

[[noreturn]] void refuse(const fs::path& path, const std::string& reason) {
  throw std::runtime_error("the run folder " + path.generic_string() + " " + reason);
}

// A run that was killed at its begin leaves its lock and the beginning of its record.
bool isEmpty(const fs::path& folder) {
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const fs::path name = entry.path().filename();
    if (name != kLockFile && name != kUnfinishedRecord) return false;
  }
  return true;
}

// Refuses to remove another run, and files that were put into an ended run afterwards.
void requireOwnFiles(const fs::path& folder) {
  std::set<std::string> known = RunRecord::entriesIn(folder);
  const bool isListed = !known.empty();
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (isListed && known.count(name) == 0) {
      refuse(folder, "has " + name + ", which is not of its earlier run");
    }
  }
  for (fs::recursive_directory_iterator entry(folder), end; entry != end; ++entry) {
    const bool isDeeper = entry.depth() > 0;
    if (isDeeper && entry->path().filename() == kLockFile) {
      refuse(folder, "contains another run: " + entry->path().parent_path().generic_string());
    }
  }
}

// Keeps the record: after an interruption, the folder is still recognised.
void removeRun(const fs::path& folder) {
  const std::vector<fs::directory_entry> entries{fs::directory_iterator(folder),
                                                 fs::directory_iterator()};
  for (const fs::directory_entry& entry : entries) {
    const fs::path name = entry.path().filename();
    if (name != kLockFile && name != kRecordFile) fs::remove_all(entry.path());
  }
}

void requireUsable(const fs::path& path, bool overwrite) {
  if (isEmpty(path)) return;
  if (!RunRecord::isIn(path)) refuse(path, "has other files and no run.json of an earlier run");
  if (!overwrite) refuse(path, "has an earlier run; --overwrite replaces it");
  requireOwnFiles(path);
}

// Without a lock file, the folder is judged before one is made: nothing is added to a foreign one.
fs::path made(const fs::path& path, bool overwrite) {
  boost::system::error_code error;
  fs::create_directories(path, error);
  if (!fs::exists(path)) refuse(path, std::string("cannot be made: ") + system::errorText(error));
  if (!fs::is_directory(path)) refuse(path, "is not a folder");
  if (!fs::exists(path / kLockFile)) requireUsable(path, overwrite);
  return fs::canonical(path);
}

std::string timeText() {
  const auto now = boost::posix_time::second_clock::local_time();
  const auto day = now.date().year_month_day();
  const auto clock = now.time_of_day();
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d_%02d%02d%02d", static_cast<int>(day.year),
                static_cast<int>(day.month.as_number()), static_cast<int>(day.day.as_number()),
                static_cast<int>(clock.hours()), static_cast<int>(clock.minutes()),
                static_cast<int>(clock.seconds()));
  return text;
}

}  // namespace

RunFolder::RunFolder(const fs::path& path, bool overwrite)
    : path_(made(path, overwrite)), lock_(path_ / kLockFile) {
  if (!lock_.isHeld()) refuse(path, "is in use by another run");
  requireUsable(path_, overwrite);
  if (!isEmpty(path_)) removeRun(path_);
}

fs::path newRunFolder(const fs::path& runs, const fs::path& pipeline) {
  constexpr std::size_t kLongestName = 100;  // since systems limit the path
  fs::create_directories(runs);
  std::string stem = utility::toUtf8(oneLine(pipeline.stem().string()));
  cutText(stem, kLongestName);
  const std::string name = timeText() + "_" + utility::fromUtf8(stem);
  for (int number = 1;; ++number) {
    const std::string unique = number == 1 ? name : name + "_" + std::to_string(number);
    if (!fs::create_directory(runs / unique)) continue;
    system::pointAt(runs / "latest", unique);
    return runs / unique;
  }
}

}  // namespace libvarrow::host
