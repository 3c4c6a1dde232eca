#include "schedule/ScheduleChecker.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace jobshop {

namespace {

std::string number(Time value) {
  return std::to_string(value);
}

std::string nameOf(std::size_t job, std::size_t position) {
  return "operation " + std::to_string(position) + " of job " + std::to_string(job);
}

std::string describe(const ScheduledOperation& operation) {
  return nameOf(operation.job, operation.position) + " (machine " +
         std::to_string(operation.machine) + ", " + number(operation.start) + " to " +
         number(operation.end) + ")";
}

class Checker {
 public:
  Checker(const Instance& instance, const ShopCalendar& calendar)
      : instance_(instance), calendar_(calendar) {
    for (const auto& job : instance.jobs) {
      placed_.emplace_back(job.size(), nullptr);
    }
    onMachine_.resize(instance.machineCount);
  }

  std::vector<std::string> check(const Schedule& schedule) {
    for (const ScheduledOperation& operation : schedule.operations) checkAlone(operation);
    for (std::size_t job = 0; job < placed_.size(); ++job) checkJob(job);
    for (auto& operations : onMachine_) checkMachine(operations);
    return std::move(violations_);
  }

 private:
  void checkAlone(const ScheduledOperation& operation) {
    if (operation.job >= placed_.size() || operation.position >= placed_[operation.job].size()) {
      return report(describe(operation) + " is not in the instance");
    }
    const Operation& wanted = instance_.jobs[operation.job][operation.position];
    if (operation.machine != wanted.machine) {
      report(describe(operation) + " belongs on machine " + std::to_string(wanted.machine));
    }
    checkTime(operation, calendar_.of(wanted.machine), wanted.duration);
    if (operation.start < 0) report(describe(operation) + " starts before time 0");
    if (operation.machine < onMachine_.size()) onMachine_[operation.machine].push_back(&operation);

    const ScheduledOperation*& place = placed_[operation.job][operation.position];
    if (place != nullptr) {
      return report(describe(operation) + " is a duplicate of " + describe(*place));
    }
    place = &operation;
  }

  void checkTime(const ScheduledOperation& operation, const MachineCalendar& calendar, Time work) {
    const Time wanted = calendar.timeFor(work);
    if (calendar.alwaysWorks() || operation.start < 0 || operation.end < operation.start) {
      if (operation.end - operation.start == wanted) return;
      return report(describe(operation) + " takes a time of " + number(wanted));
    }
    if (operation.end > calendar.end()) {
      return report(describe(operation) + " ends after its machine's calendar");
    }
    checkWorkingTime(operation, calendar.working(), wanted);
  }

  void checkWorkingTime(const ScheduledOperation& operation, const libvarrow::TimeBlock& working,
                        Time wanted) {
    const ShopClock& clock = calendar_.clock();
    const auto start = clock.pointAt(operation.start);
    const auto end = clock.pointAt(operation.end);
    const auto unit = wanted == 0 ? boost::posix_time::time_duration() : clock.unit();
    if (!working.haveBlock(start, start + unit)) {
      report(describe(operation) + " starts outside working time");
    }
    if (!working.haveBlock(end - unit, end)) {
      report(describe(operation) + " ends outside working time");
    }
    const Time worked =
        start == end ? 0 : working.getTotalDur(start, end).ticks() / clock.unit().ticks();
    if (worked == wanted) return;
    report(describe(operation) + " has a working time of " + number(worked) + ", but takes " +
           number(wanted));
  }

  void checkJob(std::size_t job) {
    const ScheduledOperation* before = nullptr;
    for (std::size_t position = 0; position < placed_[job].size(); ++position) {
      const ScheduledOperation* const operation = placed_[job][position];
      if (operation == nullptr) {
        report(nameOf(job, position) + " is missing");
        continue;
      }
      if (before != nullptr && operation->start < before->end) {
        report(describe(*operation) + " starts before the end of " + describe(*before));
      }
      before = operation;
    }
  }

  // Compares each operation with the one that holds the machine longest, not with its neighbour
  // alone: a long operation may cover several.
  void checkMachine(std::vector<const ScheduledOperation*>& operations) {
    std::sort(operations.begin(), operations.end(),
              [](const ScheduledOperation* a, const ScheduledOperation* b) {
                return std::tie(a->start, a->end, a->job, a->position) <
                       std::tie(b->start, b->end, b->job, b->position);
              });
    const ScheduledOperation* holder = nullptr;
    for (const ScheduledOperation* operation : operations) {
      if (holder != nullptr && operation->start < holder->end) {
        report(describe(*operation) + " overlaps " + describe(*holder));
      }
      if (holder == nullptr || operation->end > holder->end) holder = operation;
    }
  }

  void report(std::string violation) { violations_.push_back(std::move(violation)); }

  const Instance& instance_;
  const ShopCalendar& calendar_;
  std::vector<std::vector<const ScheduledOperation*>> placed_;
  std::vector<std::vector<const ScheduledOperation*>> onMachine_;
  std::vector<std::string> violations_;
};

}  // namespace

std::vector<std::string> findViolations(const Instance& instance, const Schedule& schedule,
                                        const ShopCalendar& calendar) {
  return Checker(instance, calendar).check(schedule);
}

}  // namespace jobshop
