#include "base/time_text.h"

#include <algorithm>
#include <cstring>

namespace libvarrow::base::time_text {

using boost::gregorian::date;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

namespace {

char* writeSpecial(char* to, bool isNegativeInfinity, bool isPositiveInfinity) {
  const char* name = isNegativeInfinity   ? "-infinity"
                     : isPositiveInfinity ? "+infinity"
                                          : "not-a-date-time";
  return std::copy_n(name, std::strlen(name), to);
}

}  // namespace

char* write(char* to, const date& value) {
  if (value.is_special()) {
    return writeSpecial(to, value.is_neg_infinity(), value.is_pos_infinity());
  }
  return time_digits::writeDate(to, value);
}

char* write(char* to, const ptime& value) {
  if (value.is_special()) {
    return writeSpecial(to, value.is_neg_infinity(), value.is_pos_infinity());
  }
  return time_digits::writeTime(to, value);
}

char* write(char* to, const time_duration& value) {
  if (value.is_special()) {
    return writeSpecial(to, value.is_neg_infinity(), value.is_pos_infinity());
  }
  return time_digits::writeClock(to, time_digits::clockParts(value));
}

}  // namespace libvarrow::base::time_text
