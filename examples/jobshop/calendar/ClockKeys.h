// Keys of modules that write clock times; they replace the clock of the calendar.
#pragma once

#include <cppbind/imp/binder.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <optional>

#include "calendar/ShopCalendar.h"
#include "calendar/ShopClock.h"

namespace jobshop {

struct ClockKeys {
  std::optional<boost::posix_time::ptime> start;
  boost::posix_time::time_duration timeUnit;

  void setBind(cppbind::Binder* binder, bool bindFields);

  ShopClock clockFor(const ShopCalendar& calendar) const;
};

}  // namespace jobshop
