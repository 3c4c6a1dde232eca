// Checks a schedule against its instance, knowing nothing of how schedules are built.
#pragma once

#include <string>
#include <vector>

#include "Instance.h"
#include "Schedule.h"
#include "calendar/ShopCalendar.h"

namespace jobshop {

/// Every way in which `schedule` breaks the rules, as a sentence that names the operations; empty
/// when it is feasible. The rules: every operation of the instance once, on its machine, for its
/// time, from 0 on; a job's operations one after the other; no machine at two at once; with a
/// calendar, an operation starts and ends in its machine's working time and has as much of it in
/// between as its work takes.
std::vector<std::string> findViolations(const Instance& instance, const Schedule& schedule,
                                        const ShopCalendar& calendar = {});

}  // namespace jobshop
