// Builds active schedules: no operation could start earlier without delaying another.
#pragma once

#include <functional>

#include "DispatchRules.h"
#include "Instance.h"
#include "Schedule.h"
#include "calendar/ShopCalendar.h"

namespace jobshop {

/// The largest goes first; of equals, the job with the lowest number.
using Urgency = std::function<double(const Candidate&)>;

/// The algorithm of Giffler and Thompson: of all next operations, take the one that could end
/// first; on its machine, only those that could start before that end may go next, and `urgency`
/// picks among them.
///
/// With a calendar an operation starts in its machine's working time, and what interrupts that
/// interrupts the operation, which keeps the machine. What `urgency` is told of durations and work
/// are working times then. Throws as ShopCalendar::run when a calendar ends too early.
std::vector<ScheduledOperation> buildActiveSchedule(const Instance& instance,
                                                    const Urgency& urgency,
                                                    const ShopCalendar& calendar = {});

}  // namespace jobshop
