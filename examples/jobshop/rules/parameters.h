// The objects of a schedule that rules check.
#pragma once

#include <libvarrow/xrule/RuleResult.h>

#include <cstddef>
#include <string>
#include <vector>

#include "calendar/MachineCalendar.h"
#include "schedule/Schedule.h"

namespace jobshop {

struct JobParameter : libvarrow::RuleParameter {
  static constexpr const char* kKind = "job";
  static std::size_t countIn(const Instance& instance) { return instance.jobs.size(); }
  std::size_t number() const { return job; }

  std::size_t job = 0;
  std::vector<ScheduledOperation> operations;  ///< by position

  std::string dumpStr() const override { return "job " + std::to_string(job); }
};

struct MachineParameter : libvarrow::RuleParameter {
  static constexpr const char* kKind = "machine";
  static std::size_t countIn(const Instance& instance) { return instance.machineCount; }
  std::size_t number() const { return machine; }

  std::size_t machine = 0;
  std::vector<ScheduledOperation> operations;  ///< by start
  Time makespan = 0;                           ///< of the whole schedule
  const MachineCalendar* calendar = nullptr;   ///< not null

  std::string dumpStr() const override { return "machine " + std::to_string(machine); }
};

}  // namespace jobshop
