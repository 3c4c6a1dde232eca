// A schedule as JSON, as CSV, and as text for a person.
#pragma once

#include <json/value.h>

#include <string>

#include "Instance.h"
#include "Schedule.h"
#include "ShopClock.h"
#include "calendar/ShopCalendar.h"

namespace jobshop {

/// {"instance", "makespan", "lower_bound", "origin", "jobs": [[{"machine", "start", "end"}]]}; with
/// a clock, operations have "start_clock" and "end_clock" too; with a calendar, "work", the working
/// time between start and end, and those that it interrupts "interruptions": [{"start", "end"}].
Json::Value scheduleJson(const Instance& instance, const Schedule& schedule,
                         const ShopCalendar& calendar, const ShopClock& clock);

/// A header, then a line for each operation, by start; with a calendar, "work" is the last column.
std::string scheduleCsv(const Schedule& schedule, const ShopCalendar& calendar,
                        const ShopClock& clock);

/// What each machine does, in order, with the working time that it stands still.
std::string scheduleByMachine(const Instance& instance, const Schedule& schedule,
                              const ShopCalendar& calendar);

/// The instance in the form that it is read in.
std::string instanceText(const Instance& instance);

}  // namespace jobshop
