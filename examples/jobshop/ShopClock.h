// Turns the time units of a schedule into the shop's clock times.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <string>

#include "Instance.h"

namespace jobshop {

class ShopClock {
 public:
  /// No clock: the schedule stays in time units.
  ShopClock() = default;
  /// Time 0 is `start`; a time unit takes `unit`, at least a second.
  ShopClock(boost::posix_time::ptime start, boost::posix_time::time_duration unit)
      : start_(start), unit_(unit) {}

  bool isSet() const { return !start_.is_special(); }
  const boost::posix_time::time_duration& unit() const { return unit_; }

  // What follows is for a clock that is set.

  /// For a time from 0 on. Throws std::runtime_error past the year 9999.
  boost::posix_time::ptime pointAt(Time time) const;
  /// "2024-03-05 07:08:00", as pointAt.
  std::string at(Time time) const;

  /// The whole time units from the start to `point`, which is not before it.
  Time unitsUntil(const boost::posix_time::ptime& point) const;

 private:
  boost::posix_time::ptime start_;
  boost::posix_time::time_duration unit_;
};

}  // namespace jobshop
