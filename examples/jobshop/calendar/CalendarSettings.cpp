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
  binder->about("The hours and the pace of one machine. Missing keys are those of the shop.");
  binder->field("machine", machine).about("The number of the machine.");
  WorkingHours::setBind(binder, bindFields);
}

void CalendarSettings::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->field("start", start)
      .satisfies(isPointInTime, "must be a date and a time")
      .about("The time of unit 0.");
  bindTimeUnit(*binder, timeUnit);
  binder->field("days", days, kUsualDays)
      .between(1, kMaxDays)
      .about("The length of the calendars, in days.");
  shop.setBind(binder, bindFields);
  binder->field("machines", machines, {}).about("Machines that differ from the shop.");
  if (binder->isDescribing()) return;
  require(isWithinTime(*this), "days", "expected an end before the year 10000");
  cppbind::withKey("machines", [this] { requireEachOnce(machines); });
}

bool isPointInTime(const ptime& time) {
  return !time.is_special();
}

void bindTimeUnit(cppbind::Binder& binder, boost::posix_time::time_duration& timeUnit) {
  binder.field("time_unit", timeUnit, boost::posix_time::minutes(1))
      .between(boost::posix_time::seconds(1), boost::posix_time::hours(24))
      .about("The length of a time unit.");
}

}  // namespace jobshop
