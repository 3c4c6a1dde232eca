// Converts the time units of a schedule to clock times of the shop.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <string>

#include "problem/Instance.h"

namespace jobshop {

class ShopClock {
 public:
  /// Creates a clock that is not set: the schedule stays in time units.
  ShopClock() = default;
  /// Creates a clock: time 0 is `start`; a time unit takes `unit`, at least a second.
  ShopClock(boost::posix_time::ptime start, boost::posix_time::time_duration unit)
      : start_(start), unit_(unit) {}

  bool isSet() const { return !start_.is_special(); }
  const boost::posix_time::time_duration& unit() const { return unit_; }

  // Precondition of the following functions: the clock is set.

  /// Returns the clock time of `time`, from 0 on. Throws std::runtime_error when it is after the
  /// year 9999.
  boost::posix_time::ptime pointAt(Time time) const;
  /// Returns pointAt() as text, "2024-03-05 07:08:00".
  std::string at(Time time) const;

  /// Returns the whole time units from the start to `point`, which is not before it.
  Time unitsUntil(const boost::posix_time::ptime& point) const;

 private:
  boost::posix_time::ptime start_;
  boost::posix_time::time_duration unit_;
};

}  // namespace jobshop
