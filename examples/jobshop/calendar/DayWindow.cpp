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

libvarrow::Weekdays DayWindow::weekdays() const {
  libvarrow::Weekdays weekdays{};
  for (const std::string& name : days) {
    const auto fromMonday = std::find(everyDay().begin(), everyDay().end(), name);
    // The date-time library's week starts on Sunday.
    weekdays.add(boost::date_time::weekdays((fromMonday - everyDay().begin() + 1) % 7));
  }
  return weekdays;
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
