// A schedule as a picture: a row for each machine, a colour for each job.
#pragma once

#include <string>

#include "Instance.h"
#include "Schedule.h"
#include "ShopClock.h"

namespace jobshop {

/// The chart as an SVG document. Hovering an operation in a browser tells what it is, with its
/// clock times when there is a clock.
std::string ganttChart(const Instance& instance, const Schedule& schedule, const ShopClock& clock);

}  // namespace jobshop
