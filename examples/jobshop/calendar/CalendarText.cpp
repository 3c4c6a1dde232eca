#include "calendar/CalendarText.h"

#include <cppbind/imp/json_encode_binder.h>
#include <libvarrow/json/json.h>
#include <libvarrow/stream/StringIndent.h>
#include <libvarrow/time/time_range.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace jobshop {

namespace {

using CalendarUser = std::pair<const MachineCalendar*, std::string>;

// Returns each calendar with the numbers of its machines.
std::vector<CalendarUser> usersOf(const ShopCalendar& calendar, std::size_t machineCount) {
  std::vector<CalendarUser> users;
  for (std::size_t machine = 0; machine < machineCount; ++machine) {
    const MachineCalendar* const machineCalendar = &calendar.of(machine);
    auto user = std::find_if(users.begin(), users.end(), [&](const CalendarUser& other) {
      return other.first == machineCalendar;
    });
    if (user == users.end()) user = users.insert(users.end(), {machineCalendar, ""});
    user->second += ' ' + std::to_string(machine);
  }
  return users;
}

void writeWeek(std::ostream& text, const ShopClock& clock, const MachineCalendar& calendar) {
  if (calendar.alwaysWorks()) {
    text << "  always\n";
    return;
  }
  const auto start = clock.pointAt(0);
  const auto end =
      std::min(start + boost::posix_time::hours(24 * 7), clock.pointAt(calendar.end()));
  calendar.working().intersection(start, end).dumpAsRaw(text, libvarrow::StringIndent(2));
}

}  // namespace

std::string calendarKeys(const ShopCalendar& calendar) {
  return libvarrow::Json2Str(cppbind::JsonEncodeBinder().encode(calendar.settings()));
}

std::string calendarText(const ShopCalendar& calendar, std::size_t machineCount) {
  const CalendarSettings& settings = calendar.settings();
  std::ostringstream text;
  text.exceptions(std::ios_base::badbit);  // without memory it would drop the rest
  text << "time 0 is " << libvarrow::time2str(settings.start) << ", a time unit "
       << libvarrow::time2str(settings.timeUnit) << ", calendars end at "
       << libvarrow::time2str(settings.end()) << '\n';
  for (const auto& [machineCalendar, machines] : usersOf(calendar, machineCount)) {
    text << "\nworking time of machine" << machines << " in the first week, efficiency "
         << machineCalendar->efficiency().text() << '\n';
    writeWeek(text, calendar.clock(), *machineCalendar);
  }
  text << '\n';
  return text.str();
}

}  // namespace jobshop
