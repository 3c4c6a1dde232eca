#include "schedule/EarlierStarts.h"

#include <algorithm>
#include <string>
#include <vector>

#include "calendar/Span.h"

namespace jobshop {

namespace {

using Operations = std::vector<ScheduledOperation>;

// Limits the gaps examined for an operation, so that the work grows linearly with the shop.
constexpr std::size_t kMostGaps = 20;

constexpr const char* kNotReady = "operation before not done";

class Recorder {
 public:
  Recorder(const Instance& instance, const Schedule& schedule, const ShopCalendar& calendar,
           libvarrow::RejectionStatistics& rejections)
      : instance_(instance), calendar_(calendar), rejections_(rejections) {
    for (const std::vector<Operation>& job : instance.jobs) ends_.emplace_back(job.size());
    for (const ScheduledOperation& operation : schedule.operations) {
      ends_[operation.job][operation.position] = operation.end;
    }
  }

  void record(const Operations& ofMachine, std::size_t index) {
    const ScheduledOperation& operation = ofMachine[index];
    const std::size_t position = operation.position;
    const Time ready = position == 0 ? 0 : ends_[operation.job][position - 1];
    const Time free = index == 0 ? 0 : ofMachine[index - 1].end;
    const Time possible = std::max(ready, free);
    const std::string machine = "machine " + std::to_string(operation.machine);
    reject(operation, ready, machine + " is busy", free - ready);
    reject(operation, free, kNotReady, ready - free);
    reject(operation, possible, machine + " is not working", operation.start - possible);
    for (std::size_t i = index; i > 0 && index - i < kMostGaps; --i) {
      const Span gap = {i == 1 ? 0 : ofMachine[i - 2].end, ofMachine[i - 1].start};
      if (gap.start < gap.end) recordGap(operation, ready, gap);
    }
    rejections_.placed(subject(operation));
  }

 private:
  void recordGap(const ScheduledOperation& operation, Time ready, const Span& gap) {
    const std::size_t machine = operation.machine;
    const Time work = instance_.jobs[operation.job][operation.position].duration;
    const Time time = calendar_.of(machine).timeFor(work);
    const Time end = calendar_.run(machine, gap.start, time).end;
    if (end > gap.end) {
      const std::string reason = "gap of machine " + std::to_string(machine) + " too short";
      return reject(operation, gap.start, reason, end - gap.end);
    }
    const Time endIfReady = calendar_.run(machine, std::max(gap.start, ready), time).end;
    if (endIfReady > gap.end) return reject(operation, gap.start, kNotReady, endIfReady - gap.end);
    rejections_.rejected(subject(operation), candidate(operation, gap.start), "gap not used");
  }

  void reject(const ScheduledOperation& operation, Time start, const std::string& reason,
              Time shortBy) {
    if (shortBy <= 0) return;
    const std::string job = subject(operation);
    if (calendar_.clock().isSet()) {
      const auto duration = calendar_.clock().pointAt(shortBy) - calendar_.clock().pointAt(0);
      rejections_.rejected(job, candidate(operation, start), reason, duration);
    } else {
      rejections_.rejected(job, candidate(operation, start), reason, static_cast<double>(shortBy));
    }
  }

  static std::string subject(const ScheduledOperation& operation) {
    return "job " + std::to_string(operation.job);
  }

  std::string candidate(const ScheduledOperation& operation, Time start) const {
    return "operation " + std::to_string(operation.position) + " at " +
           (calendar_.clock().isSet() ? calendar_.clock().at(start) : std::to_string(start));
  }

  const Instance& instance_;
  const ShopCalendar& calendar_;
  libvarrow::RejectionStatistics& rejections_;
  std::vector<std::vector<Time>> ends_;  // by job and position
};

}  // namespace

void recordEarlierStarts(const Instance& instance, const Schedule& schedule,
                         const ShopCalendar& calendar, libvarrow::RejectionStatistics& rejections) {
  Recorder recorder(instance, schedule, calendar, rejections);
  for (const Operations& ofMachine : schedule.byMachine(instance.machineCount)) {
    for (std::size_t i = 0; i < ofMachine.size(); ++i) recorder.record(ofMachine, i);
  }
}

}  // namespace jobshop
