// A schedule as a picture: a row for each machine, a colour for each job.
#pragma once

#include <string>

#include "Instance.h"
#include "Schedule.h"
#include "ShopClock.h"
#include "calendar/ShopCalendar.h"

namespace jobshop {

/// The chart as an SVG document. Hovering an operation in a browser tells what it is, with its
/// clock times when there is a clock. With a calendar, time off is hatched, and an operation that
/// it interrupts has a bar for each stretch of its work; the percentages are of working time.
std::string ganttChart(const Instance& instance, const Schedule& schedule,
                       const ShopCalendar& calendar, const ShopClock& clock);

}  // namespace jobshop
