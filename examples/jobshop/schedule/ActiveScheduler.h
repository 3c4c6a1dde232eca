// Builds active schedules: no operation could start earlier without delaying another.
#pragma once

#include <functional>

#include "calendar/ShopCalendar.h"
#include "problem/Instance.h"
#include "schedule/DispatchRules.h"
#include "schedule/Schedule.h"

namespace jobshop {

/// Urgency of a candidate: the largest is scheduled first; among equals, the job with the lowest
/// number.
using Urgency = std::function<double(const Candidate&)>;

/// Returns a schedule by the algorithm of Giffler and Thompson: find the next operation that could
/// end first; of all next operations on its machine that could start before that end, schedule the
/// one with the largest `urgency`.
///
/// With a calendar an operation starts in its machine's working time. An interruption of the
/// working time also interrupts the operation, which keeps the machine. `urgency` then gets
/// durations and work in working time. Throws like ShopCalendar::run when a calendar ends too
/// early.
std::vector<ScheduledOperation> buildActiveSchedule(const Instance& instance,
                                                    const Urgency& urgency,
                                                    const ShopCalendar& calendar = {});

}  // namespace jobshop
