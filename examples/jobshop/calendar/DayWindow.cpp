#include "calendar/DayWindow.h"

#include <cppbind/imp/binder.h>
#include <libvarrow/time/time_range.h>

#include <algorithm>

namespace jobshop {

namespace {

using boost::posix_time::hours;
using cppbind::ParseErrorException;

void requireKnownDays(const std::vector<std::string>& days) {
  const std::vector<std::string>& known = DayWindow::everyDay();
  if (days.empty()) throw ParseErrorException("expected at least one day");
  for (std::size_t i = 0; i < days.size(); ++i) {
    if (std::find(known.begin(), known.end(), days[i]) != known.end()) continue;
    cppbind::withIndex(i, [&] {
      throw ParseErrorException("unknown day \"" + days[i] +
                                "\"; known are mon, tue, wed, thu, fri, sat, sun");
    });
  }
}

void requireWindow(const DayWindow& window) {
  if (window.from.is_special() || window.from.is_negative() || window.from >= hours(24)) {
    throw ParseErrorException("from", "expected a time of day from 00:00:00 to 23:59:59");
  }
  if (window.to.is_special() || window.to <= window.from || window.to > window.from + hours(24)) {
    throw ParseErrorException("to", "expected a time after \"from\", " +
                                        libvarrow::time2str(window.from) +
                                        ", by at most 24 hours; 06:00 on the next day is 30:00:00");
  }
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
  binder->bind("from", from);
  binder->bind("to", to);
  binder->bind("days", days, everyDay());
  if (binder->isDescribing()) return;
  requireWindow(*this);
  cppbind::withKey("days", [this] { requireKnownDays(days); });
}

}  // namespace jobshop
