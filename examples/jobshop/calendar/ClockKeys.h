// The keys by which a module that writes clock times takes another clock than the calendar's.
#pragma once

#include <cppbind/imp/binder.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include "ShopClock.h"
#include "calendar/ShopCalendar.h"

namespace jobshop {

struct ClockKeys {
  boost::posix_time::ptime start;
  boost::posix_time::time_duration timeUnit;

  /// - "start", that of the calendar if there is one: when the schedule starts, "2024-03-05
  ///   06:00:00"; clock times then stand beside the time units;
  /// - "time_unit", "00:01:00": how long a time unit is on a clock that starts at "start".
  void setBind(cppbind::Binder* binder, bool bindFields);

  ShopClock clockFor(const ShopCalendar& calendar) const;
};

}  // namespace jobshop
