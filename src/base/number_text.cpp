#include "base/number_text.h"

#include <charconv>

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

std::string twoDecimals(double value) {
  return written(value, std::chars_format::fixed, 2);
}

std::string sixDecimals(double value) {
  return written(value, std::chars_format::fixed, 6);
}

}  // namespace libvarrow::base::number_text
