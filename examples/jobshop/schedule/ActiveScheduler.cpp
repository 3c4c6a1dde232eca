#include "schedule/ActiveScheduler.h"

#include <algorithm>
#include <utility>

namespace jobshop {

namespace {

class Builder {
 public:
  Builder(const Instance& instance, const ShopCalendar& calendar)
      : instance_(instance),
        calendar_(calendar),
        jobs_(instance.jobs.size()),
        machineFree_(instance.machineCount),
        waiting_(instance.machineCount) {
    for (std::size_t job = 0; job < jobs_.size(); ++job) {
      const std::vector<Operation>& operations = instance.jobs[job];
      if (operations.empty()) continue;
      for (const Operation& operation : operations) jobs_[job].timeRemaining += timeFor(operation);
      setNext(job, operations.data());
      unfinished_.push_back(job);
    }
    done_.reserve(instance.operationCount());
  }

  std::vector<ScheduledOperation> build(const Urgency& urgency) {
    while (!unfinished_.empty()) place(mostUrgent(jobThatEndsFirst(), urgency));
    return std::move(done_);
  }

 private:
  struct JobState {
    const Operation* next = nullptr;
    Span earliest;             // where `next` could run; cached, since calendars are slow
    std::size_t position = 0;  // of `next`
    Time ready = 0;
    Time time = 0;  // of `next`, working
    Time timeRemaining = 0;
  };

  Time timeFor(const Operation& operation) const {
    return calendar_.of(operation.machine).timeFor(operation.duration);
  }

  void setNext(std::size_t job, const Operation* next) {
    jobs_[job].next = next;
    jobs_[job].time = timeFor(*next);
    std::vector<std::size_t>& waiting = waiting_[next->machine];
    waiting.insert(std::lower_bound(waiting.begin(), waiting.end(), job), job);
    setEarliest(job);
  }

  void setEarliest(std::size_t job) {
    JobState& state = jobs_[job];
    const std::size_t machine = state.next->machine;
    state.earliest =
        calendar_.run(machine, std::max(state.ready, machineFree_[machine]), state.time);
  }

  // Returns the job that could end first; among equals, the one that starts first: an operation
  // that takes no time must not delay one that could run before it.
  std::size_t jobThatEndsFirst() const {
    const auto endAndStart = [this](std::size_t job) {
      return std::make_pair(jobs_[job].earliest.end, jobs_[job].earliest.start);
    };
    return *std::min_element(
        unfinished_.begin(), unfinished_.end(),
        [&](std::size_t a, std::size_t b) { return endAndStart(a) < endAndStart(b); });
  }

  // `first` is always a candidate, even when it takes no time and nothing starts before its end.
  std::size_t mostUrgent(std::size_t first, const Urgency& urgency) const {
    const std::size_t machine = jobs_[first].next->machine;
    const Time end = jobs_[first].earliest.end;
    std::size_t best = first;
    double bestUrgency = urgency(candidate(first));
    for (const std::size_t job : waiting_[machine]) {
      if (job == first || jobs_[job].earliest.start >= end) continue;
      const double found = urgency(candidate(job));
      if (found < bestUrgency || (found == bestUrgency && job > best)) continue;
      best = job;
      bestUrgency = found;
    }
    return best;
  }

  Candidate candidate(std::size_t job) const {
    const JobState& state = jobs_[job];
    return {job, state.ready, state.time, state.timeRemaining,
            instance_.jobs[job].size() - state.position};
  }

  void place(std::size_t job) {
    JobState& state = jobs_[job];
    const std::size_t machine = state.next->machine;
    done_.push_back({job, state.position, machine, state.earliest.start, state.earliest.end});
    machineFree_[machine] = state.earliest.end;
    remove(job, waiting_[machine]);
    for (const std::size_t other : waiting_[machine]) setEarliest(other);
    state.ready = state.earliest.end;
    state.timeRemaining -= state.time;
    ++state.position;
    if (state.position < instance_.jobs[job].size()) {
      setNext(job, state.next + 1);
    } else {
      remove(job, unfinished_);
    }
  }

  static void remove(std::size_t job, std::vector<std::size_t>& jobs) {
    jobs.erase(std::lower_bound(jobs.begin(), jobs.end(), job));
  }

  const Instance& instance_;
  const ShopCalendar& calendar_;
  std::vector<JobState> jobs_;
  std::vector<Time> machineFree_;
  // Sorted, so that the lowest number wins among equals.
  std::vector<std::vector<std::size_t>>
      waiting_;  // by machine: the jobs whose next operation needs it
  std::vector<std::size_t> unfinished_;
  std::vector<ScheduledOperation> done_;
};

}  // namespace

std::vector<ScheduledOperation> buildActiveSchedule(const Instance& instance,
                                                    const Urgency& urgency,
                                                    const ShopCalendar& calendar) {
  return Builder(instance, calendar).build(urgency);
}

}  // namespace jobshop
