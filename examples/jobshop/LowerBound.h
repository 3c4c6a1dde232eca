// How short a schedule can be at best.
#pragma once

#include "Instance.h"
#include "calendar/ShopCalendar.h"

namespace jobshop {

/// A makespan that no schedule can beat: the longest job, or a machine's work together with the
/// shortest way to it and the shortest way from it; each in working time. Throws as
/// ShopCalendar::run when a calendar ends before.
Time lowerBound(const Instance& instance, const ShopCalendar& calendar = {});

}  // namespace jobshop
