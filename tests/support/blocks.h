// Blocks of time, in hours.
#pragma once

#include <boost/date_time/posix_time/posix_time.hpp>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "libvarrow/time/TimeBlock.h"

namespace test_support {

using boost::gregorian::date;
using boost::gregorian::days;
using boost::posix_time::hours;
using boost::posix_time::milliseconds;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

const date kFirstDay(2024, 3, 1);

/// Returns the time so many hours after kFirstDay 0:00.
inline ptime at(double hour) {
  return ptime(kFirstDay,
               boost::posix_time::microseconds(static_cast<std::int64_t>(hour * 3600e6)));
}

/// Returns a slot that may be reversed, unlike one that its constructor makes.
inline libvarrow::TimeSlot slotOf(ptime begin, ptime end) {
  libvarrow::TimeSlot slot;
  slot.time_begin = begin;
  slot.time_end = end;
  return slot;
}
inline libvarrow::TimeSlot slot(double begin, double end) {
  return slotOf(at(begin), at(end));
}

inline libvarrow::TimeBlock blockOf(std::initializer_list<libvarrow::TimeSlot> slots) {
  return libvarrow::TimeBlock(std::vector<libvarrow::TimeSlot>(slots));
}

}  // namespace test_support
