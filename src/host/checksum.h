// Checksums of files.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>

namespace libvarrow::host {

/// Returns the SHA-256 of a file in hexadecimal digits; empty when it cannot be read, and for
/// pipes, which can be read once.
std::string checksum(const boost::filesystem::path& path);

}  // namespace libvarrow::host
