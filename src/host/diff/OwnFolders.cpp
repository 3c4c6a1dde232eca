#include "host/diff/OwnFolders.h"

#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <set>

#include "host/json_string.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

// Returns true for a character that continues a file name, so that "/run" is not found in "/run2".
bool continuesName(char c) {
  const bool isAscii = static_cast<unsigned char>(c) < 0x80;
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  return !isAscii || isLetter || (c >= '0' && c <= '9') || c == '_' || c == '-' || c == '.';
}

}  // namespace

std::string textAt(const Json::Value& object, const char* key) {
  const bool isText = object.isObject() && object[key].isString();
  return isText ? object[key].asString() : std::string();
}

fs::path pathAt(const Json::Value& object, const char* key) {
  return programText(textAt(object, key));
}

// Files have the names in UTF-8 or, those of modules and logs, in the encoding of the system.
OwnFolders::OwnFolders(const fs::path& folder, const Json::Value& record) {
  std::set<std::string> names;
  const auto add = [&](const fs::path& path) {
    const std::string name = path.generic_string();
    if (path.is_absolute() && path.has_relative_path()) {
      names.insert({name, jsonString(name).asString()});
    }
  };
  add(fs::canonical(folder));
  add(pathAt(record, "folder"));  // where it was before it was moved
  add(pathAt(record, "folder_of_inputs"));
  add(pathAt(record, "pipeline").parent_path());
  for (const Json::Value& input : record["inputs"]) {
    add(pathAt(input, "file").parent_path());
  }
  folders_.assign(names.begin(), names.end());
  std::sort(folders_.begin(), folders_.end(),
            [](const auto& left, const auto& right) { return left.size() > right.size(); });
}

std::string OwnFolders::removedFrom(const std::string& text) const {
  std::string result = text;
  for (const std::string& folder : folders_) {
    for (std::size_t at = 0; (at = result.find(folder, at)) != std::string::npos;) {
      const std::size_t end = at + folder.size();
      if (end < result.size() && continuesName(result[end])) {
        at = end;
      } else {
        result.replace(at, folder.size(), "...");
      }
    }
  }
  return result;
}

bool FoldersOfRuns::isSame(const std::string& ofLeft, const std::string& ofRight) const {
  return ofLeft == ofRight || left.removedFrom(ofLeft) == right.removedFrom(ofRight);
}

}  // namespace libvarrow::host
