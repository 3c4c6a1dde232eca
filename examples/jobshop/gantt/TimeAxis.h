// The labels of a chart's time axis.
#pragma once

#include <string>
#include <vector>

#include "calendar/ShopClock.h"
#include "problem/Instance.h"

namespace jobshop {

struct Tick {
  double at = 0;  ///< in time units; with a clock it may be a fraction
  std::string label;
};

struct TimeAxis {
  std::vector<Tick> ticks;
  std::vector<Tick> days;  ///< midnights, with a clock; the first may be the start of the axis
};

/// Returns the axis from 0 to `end` with `scale` pixels per time unit: clock times and days if
/// there is a clock, otherwise time units at 1, 2 or 5 times a power of ten.
TimeAxis timeAxis(Time end, double scale, const ShopClock& clock);

}  // namespace jobshop
