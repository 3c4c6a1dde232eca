// Paths through symbolic links that may change.
#pragma once

#include <boost/filesystem/path.hpp>

namespace libvarrow::host {

/// Returns `path` without its symbolic links; `path` itself when it has none or does not exist. A
/// link such as "runs/latest" points elsewhere as soon as a run begins.
boost::filesystem::path withoutLinks(const boost::filesystem::path& path);

}  // namespace libvarrow::host
