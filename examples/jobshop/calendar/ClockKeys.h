// Keys of modules that write clock times; they replace the clock of the calendar.
#pragma once

#include <cppbind/imp/binder.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include "ShopClock.h"
#include "calendar/ShopCalendar.h"

namespace jobshop {

struct ClockKeys {
  boost::posix_time::ptime start;
  boost::posix_time::time_duration timeUnit;

  /// Binds:
  /// - "start", by default that of the calendar, if set: when the schedule starts, "2024-03-05
  ///   06:00:00"; clock times are then written beside the time units;
  /// - "time_unit", by default "00:01:00": the length of a time unit on a clock that starts at
  ///   "start".
  void setBind(cppbind::Binder* binder, bool bindFields);

  ShopClock clockFor(const ShopCalendar& calendar) const;
};

}  // namespace jobshop
