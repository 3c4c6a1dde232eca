// Numbers as text, with the digits of printf and the standard streams in the classic locale,
// independent of the global one.
#pragma once

#include <string>

namespace libvarrow::base::number_text {

/// Returns six significant digits, as a standard stream writes by default.
std::string general(double value);

/// Returns the text of "%.2f".
std::string twoDecimals(double value);

/// Returns the text of "%f".
std::string sixDecimals(double value);

}  // namespace libvarrow::base::number_text
