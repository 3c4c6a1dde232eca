// A schedule: when each operation runs.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "calendar/MachineCalendar.h"
#include "problem/Instance.h"

namespace jobshop {

struct ScheduledOperation {
  std::size_t job = 0;
  std::size_t position = 0;  ///< among the operations of the job, from 0
  std::size_t machine = 0;
  Time start = 0;
  Time end = 0;  ///< includes interruptions
};

struct Schedule {
  std::vector<ScheduledOperation> operations;
  std::string origin;  ///< how it was found, such as "MWKR, try 12"

  Time makespan() const;

  /// Returns the operations of each machine, sorted by start.
  std::vector<std::vector<ScheduledOperation>> byMachine(std::size_t machineCount) const;

  /// Returns how long each operation waits for its machine after its job is ready, sorted by job.
  /// The machine may be busy or not working.
  std::vector<Time> waitingTimes() const;
};

/// Returns the working time in `operations` of one machine.
Time busyTime(const std::vector<ScheduledOperation>& operations, const MachineCalendar& calendar);

/// Returns true when `a` is before `b` by job, then by position.
bool earlierInJob(const ScheduledOperation& a, const ScheduledOperation& b);

/// Returns true when `a` is before `b` by start, then by end, job and position. In a feasible
/// schedule this order keeps those of all jobs and machines, even of operations that take no time.
bool earlierInTime(const ScheduledOperation& a, const ScheduledOperation& b);

}  // namespace jobshop
