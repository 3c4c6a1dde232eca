// The folders of a run in its texts.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <string>
#include <vector>

namespace libvarrow::host {

/// Returns the text of a member; empty when it is missing or not a text.
std::string textAt(const Json::Value& object, const char* key);

/// Returns the path that a member names in UTF-8; empty when it is missing or not a text.
boost::filesystem::path pathAt(const Json::Value& object, const char* key);

/// The folders of one run: its own, those of its input files and that of its pipeline file. Two
/// runs of one pipeline differ in them, and texts may contain them.
class OwnFolders {
 public:
  OwnFolders(const boost::filesystem::path& folder, const Json::Value& record);

  /// Returns `text` with "..." in place of each of the folders.
  std::string removedFrom(const std::string& text) const;

 private:
  std::vector<std::string> folders_;  // the longest first
};

/// The folders of two runs that are compared.
struct FoldersOfRuns {
  OwnFolders left;
  OwnFolders right;

  /// Returns true when a text of the left run and one of the right run differ at most in the
  /// folders of their runs.
  bool isSame(const std::string& ofLeft, const std::string& ofRight) const;
};

}  // namespace libvarrow::host
