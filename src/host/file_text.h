// Reading of whole files, with the system's reason when it fails.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>

namespace libvarrow::host {

/// Reads the file at `path` into `text`, unchanged. Opens it once, because a pipe can be read only
/// once. Returns the reason when that fails, otherwise an empty text.
std::string readFile(const boost::filesystem::path& path, std::string& text);

/// Reads a file that a run wrote, as readFile() does. Refuses links, which could bring any file
/// into a report, and pipes and devices, which may have no end: a run folder may come from
/// elsewhere.
std::string readFileOfRun(const boost::filesystem::path& path, std::string& text);

}  // namespace libvarrow::host
