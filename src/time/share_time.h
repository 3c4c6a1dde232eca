// The overlap of two intervals, inline for loops.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include "cppbind/Assert.h"

namespace libvarrow {

/// Returns isOverlap of the two intervals.
inline bool shareTime(const boost::posix_time::ptime& s1, const boost::posix_time::ptime& e1,
                      const boost::posix_time::ptime& s2, const boost::posix_time::ptime& e2) {
  CPPBIND_ASSERT(s1 <= e1);
  CPPBIND_ASSERT(s2 <= e2);
  return s1 < e2 && s2 < e1;
}

}  // namespace libvarrow
