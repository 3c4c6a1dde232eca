// The reasons for which the operations of a schedule do not start earlier.
#pragma once

#include <libvarrow/statistics/RejectionStatistics.h>

#include "calendar/ShopCalendar.h"
#include "problem/Instance.h"
#include "schedule/Schedule.h"

namespace jobshop {

/// Records, for each job, the earlier starts of its operations and the obstacles to them: its own
/// operation before, other jobs on the machine, time off, and short gaps between other operations.
/// Amounts are durations if the calendar is set, otherwise time units. Precondition: the schedule
/// is feasible.
void recordEarlierStarts(const Instance& instance, const Schedule& schedule,
                         const ShopCalendar& calendar, libvarrow::RejectionStatistics& rejections);

}  // namespace jobshop
