// The relations of two intervals, inline for loops. Only overlapForwards tests for reversed ones.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include "libvarrow/time/time_range.h"

namespace libvarrow::interval_rules {

using boost::posix_time::ptime;

/// Returns whether both are true, without a branch, which intervals at random places would make the
/// processor mispredict.
inline bool both(bool a, bool b) {
  return (static_cast<unsigned>(a) & static_cast<unsigned>(b)) != 0;
}

/// Returns whether [s1, e1] contains [s2, e2], both ends included.
inline bool contains(const ptime& s1, const ptime& e1, const ptime& s2, const ptime& e2) {
  return both(s1 <= s2, e2 <= e1);
}

/// Returns whether the intervals share time. Those that only touch do not.
inline bool overlap(const ptime& s1, const ptime& e1, const ptime& s2, const ptime& e2) {
  return both(s1 < e2, s2 < e1);
}

/// Returns the same. Aborts when an interval is reversed.
inline bool overlapForwards(const ptime& s1, const ptime& e1, const ptime& s2, const ptime& e2) {
  if (s1 <= e1 && s2 <= e2) return overlap(s1, e1, s2, e2);
  return isOverlap(s1, e1, s2, e2);  // its report names the predicate that users know
}

}  // namespace libvarrow::interval_rules
