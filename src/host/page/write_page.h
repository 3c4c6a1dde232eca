// The page of a run: report.html in its folder.
#pragma once

#include <boost/filesystem/path.hpp>

#include "host/page/run_links.h"

namespace libvarrow::host {

/// Writes the page of the run in `folder`, whose modules wrote `files`, and returns its absolute
/// path. The run may have no end: then the page tells which step ran. Throws std::runtime_error
/// with the system's reason when the page cannot be written.
boost::filesystem::path writePage(const boost::filesystem::path& folder, const RunFiles& files);

}  // namespace libvarrow::host
