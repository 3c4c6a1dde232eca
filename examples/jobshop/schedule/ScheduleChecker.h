// Checks a schedule against its instance, independent of how schedules are built.
#pragma once

#include <string>
#include <vector>

#include "calendar/ShopCalendar.h"
#include "problem/Instance.h"
#include "schedule/Schedule.h"

namespace jobshop {

/// Returns every violation of the constraints in `schedule`, as a sentence that names the
/// operations; empty when it is feasible. Constraints: every operation of the instance occurs once,
/// on its machine, for its time, from 0 on; the operations of a job run one after the other; a
/// machine runs one operation at a time; with a calendar, an operation starts and ends in its
/// machine's working time and contains as much of it as its work takes.
std::vector<std::string> findViolations(const Instance& instance, const Schedule& schedule,
                                        const ShopCalendar& calendar = {});

}  // namespace jobshop
