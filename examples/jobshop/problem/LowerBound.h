// A lower bound of the makespan.
#pragma once

#include "calendar/ShopCalendar.h"
#include "problem/Instance.h"

namespace jobshop {

/// Returns a makespan that no schedule can beat, in working time: the longest job, or a machine's
/// work plus its shortest head and its shortest tail, if that is longer. Throws like
/// ShopCalendar::run when a calendar ends before.
Time lowerBound(const Instance& instance, const ShopCalendar& calendar = {});

}  // namespace jobshop
