// The files that the page of a run links or shows.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <string>
#include <utility>
#include <vector>

namespace libvarrow::host {

/// Files that modules wrote, as kind and absolute path.
using RunFiles = std::vector<std::pair<std::string, std::string>>;

struct RunLinks {
  /// {"own": [PATH...], "files": [{"kind", "path", "link", "picture"}...]}: the run's own files
  /// that exist, and those of its modules. Links are relative to the run folder; a file outside of
  /// it has none. A picture is an index of `pictures`.
  Json::Value json;
  std::vector<std::string> pictures;  ///< data URIs, without characters to escape
};

/// Returns the links in the page of the run in `folder`, an absolute path without links.
RunLinks runLinks(const boost::filesystem::path& folder, const RunFiles& files);

}  // namespace libvarrow::host
