// The files that the page of a run links or shows.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>

namespace libvarrow::host {

/// Returns {"own": [PATH...], "files": [{"kind", "path", "link", "picture"}...]}: the run's own
/// files that exist, and the files of its modules. Links are relative to `folder`. A file outside
/// of it has no "link". A picture is a data URI.
Json::Value runLinks(const boost::filesystem::path& folder, const Json::Value& record);

}  // namespace libvarrow::host
