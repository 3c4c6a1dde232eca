#include "calendar/CalendarSettings.h"

#include <cppbind/imp/binder.h>

#include <set>
#include <string>

namespace jobshop {

namespace {

using boost::posix_time::hours;
using boost::posix_time::ptime;

void require(bool valid, const char* key, const std::string& expected) {
  if (!valid) throw cppbind::ParseErrorException(key, expected);
}

// Returns true when the calendars, with some room after their end, fit the range of time.
bool isWithinTime(const CalendarSettings& settings) {
  const ptime last(boost::posix_time::max_date_time);
  return hours(24 * (settings.days + 2)) + settings.timeUnit * 2 < last - settings.start;
}

void requireEachOnce(const std::vector<MachineHours>& machines) {
  std::set<std::uint64_t> seen;
  for (std::size_t i = 0; i < machines.size(); ++i) {
    cppbind::withIndex(i, [&] {
      require(seen.insert(machines[i].machine).second, "machine",
              "machine " + std::to_string(machines[i].machine) + " already has hours");
    });
  }
}

}  // namespace

void MachineHours::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->bind("machine", machine);
  WorkingHours::setBind(binder, bindFields);
}

void CalendarSettings::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->bind("start", start);
  binder->bind("time_unit", timeUnit, boost::posix_time::minutes(1));
  binder->bind("days", days, kUsualDays);
  shop.setBind(binder, bindFields);
  binder->bind("machines", machines, {});
  if (binder->isDescribing()) return;
  require(!start.is_special(), "start", "expected a date and a time");
  require(!timeUnit.is_special() && timeUnit >= boost::posix_time::seconds(1), "time_unit",
          "expected at least 00:00:01");
  require(days >= 1 && days <= kMaxDays, "days", "expected a number from 1 to 36600");
  require(isWithinTime(*this), "days", "expected an end before the year 10000");
  cppbind::withKey("machines", [this] { requireEachOnce(machines); });
}

}  // namespace jobshop
