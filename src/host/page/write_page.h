// The page of a run: report.html in its folder.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>

namespace libvarrow::host {

constexpr const char* kPageFile = "report.html";

/// Writes the page of the run in `folder`, whose run.json has `record`, and returns its absolute
/// path. The run may have no end: then the page tells which step ran. Throws std::runtime_error
/// with the system's reason when the page cannot be written.
boost::filesystem::path writePage(const boost::filesystem::path& folder, const Json::Value& record);

}  // namespace libvarrow::host
