// Limits on sliding windows: so many dates in so many days, so much in so many consecutive values.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <cstdint>
#include <set>
#include <vector>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Where a limit is exceeded.
template <class T>
struct OverflowRange {
  /// The first date counted, or the position before the window.
  T begin;
  /// The last date counted, or the window's last position.
  T end;
};

/// By how much the first window of `window` days with more than `limit` of `dates` in it exceeds
/// the limit; 0 when none does. A window of 7 days holds at most d to d + 6; one of less than a day
/// holds nothing.
///
/// `range` (may be null) gets the first and the last date counted: of days 1, 2, 3, 4 in 7 days
/// with limit 3, 1 to 4.
LIBVARROW_API std::uint64_t overflowsChecker(std::set<boost::gregorian::date> const& dates,
                                             boost::gregorian::date_duration const& window,
                                             std::uint64_t limit,
                                             OverflowRange<boost::gregorian::date>* const range);

/// By how much the first `window` consecutive values whose sum is above `limit` exceed it; 0 when
/// none do. Sums are of 32 bits and wrap around.
///
/// Not looked at: the window that begins with the first value, and all when the window is as long
/// as the values or longer. Without `range` the answer is always 0. `range` gets the position
/// before the window and the window's last position: of 1, 1, 9, 1 in windows of 2 with limit 5,
/// the excess is 5, at 0 to 2.
LIBVARROW_API std::uint64_t overflowsChecker(std::vector<int> const& values, std::uint64_t window,
                                             int limit, OverflowRange<std::uint64_t>* const range);

}  // namespace libvarrow
