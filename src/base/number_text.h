// Numbers in texts: printf's and the standard streams' digits, in the classic
// locale whatever the global one is.
#pragma once

#include <string>

namespace libvarrow::base::number_text {

/// As a standard stream writes by default: six significant digits.
std::string general(double value);

/// "%.2f"
std::string twoDecimals(double value);

/// "%f"
std::string sixDecimals(double value);

}  // namespace libvarrow::base::number_text
