// Real numbers cut to integers, with what no integer can hold settled in one place.
#pragma once

#include <cstdint>
#include <limits>

namespace libvarrow::base {

/// Cut toward zero. What no unsigned integer can hold is the nearest one, and 0 for what is not a
/// number.
inline std::uint64_t truncatedToUnsigned(double value) {
  constexpr double kTwoTo64 = 18446744073709551616.0;
  if (!(value > 0)) return 0;
  if (value >= kTwoTo64) return std::numeric_limits<std::uint64_t>::max();
  return static_cast<std::uint64_t>(value);
}

}  // namespace libvarrow::base
