#include "base/number_text.h"

#include <charconv>
#include <cmath>

namespace libvarrow::base::number_text {

namespace {

template <class... Format>
std::string written(double value, Format... format) {
  char digits[400];  // the largest double has 309 digits before the point
  return std::string(digits, std::to_chars(digits, digits + sizeof digits, value, format...).ptr);
}

}  // namespace

std::string general(double value) {
  return written(value, std::chars_format::general, 6);
}

std::string shortest(double value) {
  const double size = std::fabs(value);
  const bool isPlain = value == 0 || (size >= 1e-4 && size < 1e15);
  return isPlain ? written(value, std::chars_format::fixed) : written(value);
}

std::string twoDecimals(double value) {
  return written(value, std::chars_format::fixed, 2);
}

std::string sixDecimals(double value) {
  return written(value, std::chars_format::fixed, 6);
}

}  // namespace libvarrow::base::number_text
