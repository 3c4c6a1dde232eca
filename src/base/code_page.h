// The encoding of the system.
#pragma once

#include <string>

namespace libvarrow::base {

/// Returns the name of the encoding of narrow text of the process: "CP" and the number of the ANSI
/// code page on Windows, "UTF-8" elsewhere.
std::string systemCodePageName();

}  // namespace libvarrow::base
