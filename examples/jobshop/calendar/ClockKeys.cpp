#include "calendar/ClockKeys.h"

namespace jobshop {

void ClockKeys::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->field("start", start)
      .satisfies(isPointInTime, "must be a date and a time")
      .about("Adds clock times: the time of unit 0, by default that of the calendar.");
  bindTimeUnit(*binder, timeUnit);
}

ShopClock ClockKeys::clockFor(const ShopCalendar& calendar) const {
  return start ? ShopClock(*start, timeUnit) : calendar.clock();
}

}  // namespace jobshop
