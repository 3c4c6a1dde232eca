#include "ActiveScheduler.h"

#include <algorithm>
#include <utility>

namespace jobshop {

namespace {

class Builder {
 public:
  explicit Builder(const Instance& instance)
      : instance_(instance), jobs_(instance.jobs.size()), machineFree_(instance.machineCount) {
    for (std::size_t job = 0; job < jobs_.size(); ++job) {
      const std::vector<Operation>& operations = instance.jobs[job];
      if (operations.empty()) continue;
      jobs_[job].next = operations.data();
      for (const Operation& operation : operations) jobs_[job].workRemaining += operation.duration;
      unfinished_.push_back(job);
    }
    done_.reserve(instance.operationCount());
  }

  std::vector<ScheduledOperation> build(const Urgency& urgency) {
    while (!unfinished_.empty()) place(mostUrgent(firstToEnd(), urgency));
    return std::move(done_);
  }

 private:
  struct JobState {
    const Operation* next = nullptr;  // null when the job is done
    std::size_t position = 0;         // of `next`
    Time ready = 0;
    Time workRemaining = 0;
  };

  Time earliestStart(const JobState& state) const {
    return std::max(state.ready, machineFree_[state.next->machine]);
  }

  Time earliestEnd(const JobState& state) const {
    return earliestStart(state) + state.next->duration;
  }

  // Of those that end together the one that starts first: an operation that takes no time must not
  // push back one that could run before it.
  std::size_t firstToEnd() const {
    const auto endAndStart = [this](std::size_t job) {
      return std::make_pair(earliestEnd(jobs_[job]), earliestStart(jobs_[job]));
    };
    return *std::min_element(
        unfinished_.begin(), unfinished_.end(),
        [&](std::size_t a, std::size_t b) { return endAndStart(a) < endAndStart(b); });
  }

  // `first` itself is always in question, even when it takes no time and nothing starts before its
  // end.
  std::size_t mostUrgent(std::size_t first, const Urgency& urgency) const {
    const std::size_t machine = jobs_[first].next->machine;
    const Time end = earliestEnd(jobs_[first]);
    std::size_t best = first;
    double bestUrgency = urgency(candidate(first));
    for (const std::size_t job : unfinished_) {
      const JobState& state = jobs_[job];
      if (state.next->machine != machine || job == first || earliestStart(state) >= end) continue;
      const double found = urgency(candidate(job));
      if (found < bestUrgency || (found == bestUrgency && job > best)) continue;
      best = job;
      bestUrgency = found;
    }
    return best;
  }

  Candidate candidate(std::size_t job) const {
    const JobState& state = jobs_[job];
    return {job, state.ready, state.next->duration, state.workRemaining,
            instance_.jobs[job].size() - state.position};
  }

  void place(std::size_t job) {
    JobState& state = jobs_[job];
    const Operation& operation = *state.next;
    const Time start = earliestStart(state);
    const Time end = start + operation.duration;
    done_.push_back({job, state.position, operation.machine, start, end});
    machineFree_[operation.machine] = end;
    state.ready = end;
    state.workRemaining -= operation.duration;
    ++state.position;
    const bool isDone = state.position == instance_.jobs[job].size();
    state.next = isDone ? nullptr : state.next + 1;
    if (isDone) unfinished_.erase(std::find(unfinished_.begin(), unfinished_.end(), job));
  }

  const Instance& instance_;
  std::vector<JobState> jobs_;
  std::vector<Time> machineFree_;
  std::vector<std::size_t> unfinished_;  // sorted, so that the lowest number wins among equals
  std::vector<ScheduledOperation> done_;
};

}  // namespace

std::vector<ScheduledOperation> buildActiveSchedule(const Instance& instance,
                                                    const Urgency& urgency) {
  return Builder(instance).build(urgency);
}

}  // namespace jobshop
