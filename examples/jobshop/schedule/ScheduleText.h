// A schedule as JSON, as CSV, and as readable text.
#pragma once

#include <json/value.h>

#include <string>

#include "calendar/ShopCalendar.h"
#include "calendar/ShopClock.h"
#include "problem/Instance.h"
#include "schedule/Schedule.h"

namespace jobshop {

/// Returns {"instance", "makespan", "lower_bound", "origin", "jobs": [[{"machine", "start",
/// "end"}]]}. With a clock, operations also have "start_clock" and "end_clock"; with a calendar,
/// "work", the working time between start and end, and, if interrupted, "interruptions": [{"start",
/// "end"}].
Json::Value scheduleJson(const Instance& instance, const Schedule& schedule,
                         const ShopCalendar& calendar, const ShopClock& clock);

/// Returns a header and a line for each operation, sorted by start; with a calendar, "work" is the
/// last column.
std::string scheduleCsv(const Schedule& schedule, const ShopCalendar& calendar,
                        const ShopClock& clock);

/// Returns the operations of each machine, in order, with its idle working time.
std::string scheduleByMachine(const Instance& instance, const Schedule& schedule,
                              const ShopCalendar& calendar);

/// Returns the instance in the form that parseInstance() reads.
std::string instanceText(const Instance& instance);

}  // namespace jobshop
