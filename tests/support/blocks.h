// Blocks of time, in hours.
#pragma once

#include <boost/date_time/posix_time/posix_time.hpp>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "libvarrow/time/TimeBlock.h"

namespace test_support {

const boost::gregorian::date kFirstDay(2024, 3, 1);

/// Hours from the first of March, 0:00.
inline boost::posix_time::ptime at(double hour) {
  const auto ticks = static_cast<std::int64_t>(hour * 3600e6);
  return boost::posix_time::ptime(kFirstDay, boost::posix_time::microseconds(ticks));
}

/// Checks nothing, unlike a slot's constructor.
inline libvarrow::TimeSlot slotOf(boost::posix_time::ptime begin, boost::posix_time::ptime end) {
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
