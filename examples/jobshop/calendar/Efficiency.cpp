#include "calendar/Efficiency.h"

#include <libvarrow/backtrace/Check.h>

#include <cmath>

namespace jobshop {

Efficiency::Efficiency(double workInTimeUnit) {
  LIBVARROW_CHECK(workInTimeUnit >= kMin && workInTimeUnit <= kMax);
  millionths_ = std::llround(workInTimeUnit * kMillion);
}

Time Efficiency::timeFor(Time work) const {
  // Splits `work`, since its product with a million may overflow.
  const Time whole = work / millionths_;
  const Time rest = work % millionths_;
  return whole * kMillion + (rest * kMillion + millionths_ - 1) / millionths_;
}

std::string Efficiency::text() const {
  std::string decimals = std::to_string(kMillion + millionths_ % kMillion).substr(1);
  decimals.erase(decimals.find_last_not_of('0') + 1);
  const std::string whole = std::to_string(millionths_ / kMillion);
  return decimals.empty() ? whole : whole + '.' + decimals;
}

}  // namespace jobshop
