#include "calendar/ClockKeys.h"

namespace jobshop {

void ClockKeys::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->bind("start", start, boost::posix_time::ptime());
  binder->bind("time_unit", timeUnit, boost::posix_time::minutes(1));
  if (timeUnit.is_special() || timeUnit < boost::posix_time::seconds(1)) {
    throw cppbind::ParseErrorException("time_unit", "expected at least 00:00:01");
  }
}

ShopClock ClockKeys::clockFor(const ShopCalendar& calendar) const {
  return start.is_special() ? calendar.clock() : ShopClock(start, timeUnit);
}

}  // namespace jobshop
