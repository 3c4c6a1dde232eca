// Numbers as text, with the digits of printf and the standard streams in the classic locale,
// independent of the global one.
#pragma once

#include <string>

namespace libvarrow::base::number_text {

/// Returns six significant digits, as a standard stream writes by default.
std::string general(double value);

/// Returns the fewest digits that read back as `value`, with an exponent only for values that would
/// need many zeros: "0.1", "100000", "1e+20". NaN and infinity are "nan" and "inf".
std::string shortest(double value);

/// Returns the text of "%.2f".
std::string twoDecimals(double value);

/// Returns the text of "%f".
std::string sixDecimals(double value);

}  // namespace libvarrow::base::number_text
