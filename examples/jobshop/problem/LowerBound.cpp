#include "problem/LowerBound.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace jobshop {

namespace {

struct MachineLoad {
  Time work = 0;
  Time shortestHead = std::numeric_limits<Time>::max();
  Time shortestTail = std::numeric_limits<Time>::max();
};

// Heads and jobs are measured on the calendar. Tails are not: their interruptions depend on when
// they start.
class Bound {
 public:
  Bound(const Instance& instance, const ShopCalendar& calendar)
      : calendar_(calendar), loads_(instance.machineCount) {
    for (const auto& job : instance.jobs) addJob(job);
    for (std::size_t machine = 0; machine < loads_.size(); ++machine) addMachine(machine);
  }

  Time value() const { return bound_; }

 private:
  Time timeFor(const Operation& operation) const {
    return calendar_.of(operation.machine).timeFor(operation.duration);
  }

  void addJob(const std::vector<Operation>& job) {
    Time tail = 0;
    for (const Operation& operation : job) tail += timeFor(operation);
    Time head = 0;
    for (const Operation& operation : job) {
      const Time time = timeFor(operation);
      tail -= time;
      MachineLoad& load = loads_[operation.machine];
      load.work += time;
      load.shortestHead = std::min(load.shortestHead, head);
      load.shortestTail = std::min(load.shortestTail, tail);
      head = calendar_.run(operation.machine, head, time).end;
    }
    bound_ = std::max(bound_, head);
  }

  void addMachine(std::size_t machine) {
    const MachineLoad& load = loads_[machine];
    if (load.work == 0) return;
    const Time end = calendar_.run(machine, load.shortestHead, load.work).end;
    bound_ = std::max(bound_, end + load.shortestTail);
  }

  const ShopCalendar& calendar_;
  std::vector<MachineLoad> loads_;
  Time bound_ = 0;
};

}  // namespace

Time lowerBound(const Instance& instance, const ShopCalendar& calendar) {
  return Bound(instance, calendar).value();
}

}  // namespace jobshop
