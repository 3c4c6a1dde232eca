// Instances, calendars and schedules for several tests.
#pragma once

#include <cppbind/imp/json_decode_binder.h>
#include <libvarrow/host/Host.h>

#include "calendar/ShopCalendar.h"
#include "modules/registerModules.h"
#include "problem/InstanceReader.h"
#include "problem/LowerBound.h"
#include "rules/registerRules.h"
#include "schedule/ActiveScheduler.h"
#include "schedule/ScheduleChecker.h"
#include "support/support.h"

namespace jobshop_test {

using namespace jobshop;
using namespace test_support;

// A Friday, in hours.
const std::string kFriday = R"("start": "2024-03-01 06:00:00", "time_unit": "01:00:00", )";
// From 0 to 4 and 5 to 8, and again on Monday from 72 on.
const std::string kEarlyShift = kFriday + R"(
    "shifts": [{"from": "06:00:00", "to": "14:00:00", "days": ["mon", "tue", "wed", "thu", "fri"]}],
    "breaks": [{"from": "10:00:00", "to": "11:00:00"}])";

inline Instance instanceFrom(const std::string& text) {
  return parseInstance(text, "x.txt");
}

/// Returns the calendar with the settings `keys`, the members of a JSON object.
inline ShopCalendar calendarFrom(const std::string& keys, std::size_t machineCount = 2) {
  CalendarSettings settings;
  cppbind::JsonDecodeBinder().decode(json("{" + keys + "}"), settings);
  return {settings, machineCount};
}

/// Returns a host with the classes of the example.
inline libvarrow::Host& shopHost() {
  static libvarrow::Host host("jobshop", "", kModuleRegister, kRuleRegister);
  [[maybe_unused]] static const bool isFilled = [] {
    registerModules(host.modules());
    registerRules(host.rules());
    return true;
  }();
  return host;
}

inline Schedule planned(const Instance& instance, const std::string& rule,
                        const ShopCalendar& calendar = {}) {
  return {buildActiveSchedule(instance, findDispatchRule(rule).urgency, calendar), rule};
}

}  // namespace jobshop_test
