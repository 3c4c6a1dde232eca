#include "schedule/Schedule.h"

#include <algorithm>
#include <tuple>

namespace jobshop {

Time Schedule::makespan() const {
  Time makespan = 0;
  for (const ScheduledOperation& operation : operations) {
    makespan = std::max(makespan, operation.end);
  }
  return makespan;
}

std::vector<std::vector<ScheduledOperation>> Schedule::byMachine(std::size_t machineCount) const {
  std::vector<std::vector<ScheduledOperation>> machines(machineCount);
  for (const ScheduledOperation& operation : operations) {
    machines.at(operation.machine).push_back(operation);
  }
  for (auto& machine : machines) {
    std::sort(machine.begin(), machine.end(), earlierInTime);
  }
  return machines;
}

std::vector<Time> Schedule::waitingTimes() const {
  std::vector<ScheduledOperation> sorted = operations;
  std::sort(sorted.begin(), sorted.end(), earlierInJob);
  std::vector<Time> waits;
  waits.reserve(sorted.size());
  const ScheduledOperation* before = nullptr;
  for (const ScheduledOperation& operation : sorted) {
    const bool firstOfJob = before == nullptr || before->job != operation.job;
    waits.push_back(operation.start - (firstOfJob ? 0 : before->end));
    before = &operation;
  }
  return waits;
}

Time busyTime(const std::vector<ScheduledOperation>& operations, const MachineCalendar& calendar) {
  Time busy = 0;
  for (const ScheduledOperation& operation : operations) {
    busy += calendar.workingTime(operation.start, operation.end);
  }
  return busy;
}

bool earlierInJob(const ScheduledOperation& a, const ScheduledOperation& b) {
  return std::tie(a.job, a.position) < std::tie(b.job, b.position);
}

bool earlierInTime(const ScheduledOperation& a, const ScheduledOperation& b) {
  return std::tie(a.start, a.end, a.job, a.position) < std::tie(b.start, b.end, b.job, b.position);
}

}  // namespace jobshop
