#include "calendar/DayWindow.h"

#include <cppbind/imp/binder.h>
#include <libvarrow/time/time_range.h>

#include <algorithm>

namespace jobshop {

namespace {

using boost::posix_time::hours;

void requireOrder(const DayWindow& window) {
  if (window.from < window.to && window.to <= window.from + hours(24)) return;
  throw cppbind::ParseErrorException(
      "to", "expected a time after \"from\", " + libvarrow::time2str(window.from) +
                ", by at most 24 hours; 06:00 on the next day is 30:00:00");
}

}  // namespace

const std::vector<std::string>& DayWindow::everyDay() {
  static const std::vector<std::string> days = {"mon", "tue", "wed", "thu", "fri", "sat", "sun"};
  return days;
}

bool DayWindow::startsOn(const boost::gregorian::date& day) const {
  // The date-time library's week starts on Sunday.
  const std::string& name = everyDay()[(day.day_of_week().as_number() + 6u) % 7];
  return std::find(days.begin(), days.end(), name) != days.end();
}

void DayWindow::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->about("A daily window, such as a shift or a break.");
  binder->field("from", from)
      .between(hours(0), hours(24) - boost::posix_time::seconds(1))
      .about("The time of day at which it begins.");
  binder->field("to", to).about(
      "The time at which it ends, by the same midnight: 06:00 on the next day is 30:00:00.");
  binder->field("days", days, everyDay())
      .notEmpty()
      .about("The days on which it begins.")
      .each()
      .oneOf(everyDay());
  if (!binder->isDescribing()) requireOrder(*this);
}

}  // namespace jobshop
