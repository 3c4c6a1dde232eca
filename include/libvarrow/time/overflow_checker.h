// Limits on sliding windows: on the number of dates in a period, on the sum of consecutive values.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <cstdint>
#include <set>
#include <vector>

#include "libvarrow/Export.h"

namespace libvarrow {

/// The place where a limit is exceeded.
template <class T>
struct OverflowRange {
  /// The first date counted, or the position before the window.
  T begin;
  /// The last date counted, or the window's last position.
  T end;
};

/// Returns the excess over `limit` of the first window of `window` days that has more than `limit`
/// of `dates`; 0 when no window has. A window of 7 days holds at most d to d + 6; one of less than
/// a day holds nothing.
///
/// Sets `range` (may be null) to the first and the last date counted: of days 1, 2, 3, 4 in 7 days
/// with limit 3, 1 to 4.
LIBVARROW_API std::uint64_t overflowsChecker(std::set<boost::gregorian::date> const& dates,
                                             boost::gregorian::date_duration const& window,
                                             std::uint64_t limit,
                                             OverflowRange<boost::gregorian::date>* const range);

/// Returns the excess over `limit` of the first `window` consecutive values whose sum is greater; 0
/// when no sum is. Sums have 32 bits and wrap around.
///
/// Ignores the window that begins with the first value, and all windows when `window` is not less
/// than the number of values. Always returns 0 when `range` is null. Sets `range` to the position
/// before the window and the window's last position: of 1, 1, 9, 1 in windows of 2 with limit 5,
/// the excess is 5, at 0 to 2.
LIBVARROW_API std::uint64_t overflowsChecker(std::vector<int> const& values, std::uint64_t window,
                                             int limit, OverflowRange<std::uint64_t>* const range);

}  // namespace libvarrow
