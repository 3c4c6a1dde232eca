// A Gantt chart: a row for each machine, a colour for each job.
#pragma once

#include <string>

#include "calendar/ShopCalendar.h"
#include "calendar/ShopClock.h"
#include "problem/Instance.h"
#include "schedule/Schedule.h"

namespace jobshop {

/// Returns the chart as an SVG document. In a browser, hovering over an operation shows its
/// description, with clock times if there is a clock. With a calendar, time off is hatched, an
/// interrupted operation has a bar for each span of its work, and percentages refer to working
/// time.
std::string ganttChart(const Instance& instance, const Schedule& schedule,
                       const ShopCalendar& calendar, const ShopClock& clock);

}  // namespace jobshop
