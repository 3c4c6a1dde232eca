// Saturating truncation of real numbers to integers.
#pragma once

#include <cstdint>
#include <limits>

namespace libvarrow::base {

/// Returns `value` truncated toward zero; the nearest unsigned integer when it is out of range, and
/// 0 for NaN.
inline std::uint64_t truncatedToUnsigned(double value) {
  constexpr double kTwoTo64 = 18446744073709551616.0;
  if (!(value > 0)) return 0;
  if (value >= kTwoTo64) return std::numeric_limits<std::uint64_t>::max();
  return static_cast<std::uint64_t>(value);
}

}  // namespace libvarrow::base
