// Libraries that stay in the process.
#pragma once

#include <string>

namespace libvarrow {

/// Returns whether the system has the library at `path` in this process.
bool isMapped(const std::string& path);

}  // namespace libvarrow
