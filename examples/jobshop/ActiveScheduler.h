// Builds active schedules: no operation could start earlier without delaying another.
#pragma once

#include <functional>

#include "DispatchRules.h"
#include "Instance.h"
#include "Schedule.h"

namespace jobshop {

/// The largest goes first; of equals, the job with the lowest number.
using Urgency = std::function<double(const Candidate&)>;

/// The algorithm of Giffler and Thompson: of all next operations, take the one that could end
/// first; on its machine, only those that could start before that end may go next, and `urgency`
/// picks among them.
std::vector<ScheduledOperation> buildActiveSchedule(const Instance& instance,
                                                    const Urgency& urgency);

}  // namespace jobshop
