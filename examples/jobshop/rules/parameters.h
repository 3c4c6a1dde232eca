// The things in a schedule that rules look at.
#pragma once

#include <libvarrow/xrule/RuleResult.h>

#include <cstddef>
#include <string>
#include <vector>

#include "Schedule.h"
#include "calendar/MachineCalendar.h"

namespace jobshop {

struct JobParameter : libvarrow::RuleParameter {
  std::size_t job = 0;
  std::vector<ScheduledOperation> operations;  ///< by position

  std::string dumpStr() const override { return "job " + std::to_string(job); }
};

struct MachineParameter : libvarrow::RuleParameter {
  std::size_t machine = 0;
  std::vector<ScheduledOperation> operations;  ///< by start
  Time makespan = 0;                           ///< of the whole schedule
  const MachineCalendar* calendar = nullptr;   ///< not null

  std::string dumpStr() const override { return "machine " + std::to_string(machine); }
};

}  // namespace jobshop
