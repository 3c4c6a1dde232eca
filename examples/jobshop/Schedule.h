// When each operation runs.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Instance.h"
#include "calendar/MachineCalendar.h"

namespace jobshop {

struct ScheduledOperation {
  std::size_t job = 0;
  std::size_t position = 0;  ///< among the operations of the job, from 0
  std::size_t machine = 0;
  Time start = 0;
  Time end = 0;  ///< with all that interrupts it
};

struct Schedule {
  std::vector<ScheduledOperation> operations;
  std::string origin;  ///< how it was found, such as "MWKR, try 12"

  Time makespan() const;

  /// The operations of each machine, by start.
  std::vector<std::vector<ScheduledOperation>> byMachine(std::size_t machineCount) const;

  /// How long each operation waits for its machine after its job is ready for it, by job; at work
  /// or not, both may make it wait.
  std::vector<Time> waitingTimes() const;
};

/// The working time in `operations` of one machine.
Time busyTime(const std::vector<ScheduledOperation>& operations, const MachineCalendar& calendar);

/// Orders by job, then by position.
bool earlierInJob(const ScheduledOperation& a, const ScheduledOperation& b);

}  // namespace jobshop
