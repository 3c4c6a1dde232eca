#include "Instance.h"

#include <algorithm>
#include <limits>

namespace jobshop {

namespace {

struct MachineLoad {
  Time work = 0;
  Time shortestHead = std::numeric_limits<Time>::max();
  Time shortestTail = std::numeric_limits<Time>::max();
};

Time lengthOf(const std::vector<Operation>& job) {
  Time length = 0;
  for (const Operation& operation : job) length += operation.duration;
  return length;
}

}  // namespace

std::size_t Instance::operationCount() const {
  std::size_t count = 0;
  for (const auto& job : jobs) count += job.size();
  return count;
}

Time Instance::lowerBound() const {
  Time bound = 0;
  std::vector<MachineLoad> loads(machineCount);
  for (const auto& job : jobs) {
    const Time length = lengthOf(job);
    bound = std::max(bound, length);
    Time head = 0;
    for (const Operation& operation : job) {
      MachineLoad& load = loads[operation.machine];
      load.work += operation.duration;
      load.shortestHead = std::min(load.shortestHead, head);
      head += operation.duration;
      load.shortestTail = std::min(load.shortestTail, length - head);
    }
  }
  for (const MachineLoad& load : loads) {
    if (load.work == 0) continue;
    bound = std::max(bound, load.shortestHead + load.work + load.shortestTail);
  }
  return bound;
}

}  // namespace jobshop
