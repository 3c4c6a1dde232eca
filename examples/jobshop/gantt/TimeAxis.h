// Which times a chart's axis names.
#pragma once

#include <string>
#include <vector>

#include "Instance.h"
#include "ShopClock.h"

namespace jobshop {

struct Tick {
  double at = 0;  ///< in time units; on a clock it may lie within one
  std::string label;
};

struct TimeAxis {
  std::vector<Tick> ticks;
  std::vector<Tick> days;  ///< midnights, on a clock; the first may be the axis' own start
};

/// From 0 to `end` with `scale` pixels to a time unit: clock times and days when there is a clock,
/// else time units at 1, 2 or 5 times a power of ten.
TimeAxis timeAxis(Time end, double scale, const ShopClock& clock);

}  // namespace jobshop
