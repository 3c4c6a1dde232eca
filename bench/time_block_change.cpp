// Addition and removal of slots of a calendar: TimeBlock against its peers.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "time_block_work.h"

namespace bench {

namespace {

using boost::posix_time::hours;
using boost::posix_time::minutes;

/// Times a change that cannot be undone over a batch of copies. The copies are made and destroyed
/// while the clock is stopped. A batch is large enough to hide the clock's cost and small enough
/// for the peers' nodes to stay in the caches.
template <class Set, class Change>
class OnCopies {
 public:
  explicit OnCopies(std::int64_t count) : count_(count), change_(count) {}

  Slots result() const {
    Set set = calendarOf<Set>(count_);
    change_(set);
    return set.slots();
  }

  void time(benchmark::State& state) const {
    const Set& calendar = calendarOf<Set>(count_);
    const std::int64_t batch = std::max<std::int64_t>(20000 / count_, 1);
    std::vector<Set> copies;
    while (state.KeepRunningBatch(batch)) {
      state.PauseTiming();
      copies.assign(static_cast<std::size_t>(batch), calendar);
      state.ResumeTiming();
      for (Set& copy : copies) change_(copy);
      state.PauseTiming();
      copies.clear();
      state.ResumeTiming();
    }
  }

 private:
  std::int64_t count_;
  Change change_;
};

/// Adds another calendar of n slots, each of which overlaps one.
template <class Set>
class AddOverlapping {
 public:
  explicit AddOverlapping(std::int64_t count)
      : other_(setOf<Set>(delayed(calendarSlots(count), minutes(20)))) {}
  void operator()(Set& set) const { set.add(other_); }

 private:
  Set other_;
};

/// Removes n/10 windows of an hour at random places.
template <class Set>
class RemoveWindows {
 public:
  explicit RemoveWindows(std::int64_t count)
      : windows_(setOf<Set>(randomWindows(calendarSlots(count), count / 10, hours(1)))) {}
  void operator()(Set& set) const { set.remove(windows_); }

 private:
  Set windows_;
};

/// Adds one interval over the middle tenth of the slots.
template <class Set>
class AddWide {
 public:
  explicit AddWide(std::int64_t count) {
    const Slots slots = calendarSlots(count);
    begin_ = slots[slots.size() * 45 / 100].begin + hours(1);
    end_ = slots[slots.size() * 55 / 100].begin + hours(1);
  }
  void operator()(Set& set) const { set.add(begin_, end_); }

 private:
  Time begin_;
  Time end_;
};

/// Removes an hour from a slot, which splits it, and adds it back: the tail moves twice. The slots
/// are random ones of the middle half, so that the branch predictor does not learn the place.
template <class Set>
class CutOne {
 public:
  explicit CutOne(std::int64_t count) : set_(calendarOf<Set>(count)) {
    const Slots slots = calendarSlots(count);
    std::mt19937 random(6);
    for (int i = 0; i < 65536; ++i) {
      const std::size_t middle = slots.size() / 4 + random() % (slots.size() / 2);
      begins_.push_back(slots[middle].begin + hours(1));
    }
  }

  Slots result() {
    Slots slots = cut(begins_.front()).slots();
    const Slots restored = addBack(begins_.front()).slots();
    slots.insert(slots.end(), restored.begin(), restored.end());
    return slots;
  }

  void time(benchmark::State& state) {
    std::size_t at = 0;
    for (auto _ : state) {
      benchmark::DoNotOptimize(cut(begins_[at]));
      benchmark::DoNotOptimize(addBack(begins_[at]));
      if (++at == begins_.size()) at = 0;
    }
  }

 private:
  Set& cut(Time begin) {
    set_.remove(begin, begin + hours(1));
    return set_;
  }
  Set& addBack(Time begin) {
    set_.add(begin, begin + hours(1));
    return set_;
  }

  Set set_;
  std::vector<Time> begins_;
};

/// Moves as many bytes as CutOne: the least that a vector costs. The argument is the number of
/// slots.
void moveTail(benchmark::State& state) {
  Slots slots = calendarSlots(state.range(0));
  const std::size_t count = slots.size();
  slots.emplace_back();
  std::vector<std::size_t> middles(65536);
  std::mt19937 random(6);
  for (std::size_t& middle : middles) middle = count / 4 + random() % (count / 2);
  std::size_t at = 0;
  for (auto _ : state) {
    const auto middle = slots.begin() + static_cast<std::ptrdiff_t>(middles[at]);
    std::copy_backward(middle, slots.end() - 1, slots.end());
    benchmark::ClobberMemory();
    std::copy(middle + 1, slots.end(), middle);
    benchmark::ClobberMemory();
    if (++at == middles.size()) at = 0;
  }
}

BENCHMARK(moveTail)->Name("block_cut_one/move_tail")->Arg(100000)->MinTime(0.02);

template <class Set>
using Unite = OnCopies<Set, AddOverlapping<Set>>;
template <class Set>
using CutMany = OnCopies<Set, RemoveWindows<Set>>;
template <class Set>
using Widen = OnCopies<Set, AddWide<Set>>;

const bool kUnite = registerWork<Unite>("block_unite", 0.01);
const bool kCutMany = registerWork<CutMany>("block_cut_many", 0.01);
// Copying takes much longer than this change.
const bool kAddWide = registerWork<Widen>("block_add_wide", 0.003);
const bool kCutOne = registerWork<CutOne, TimelineSet>("block_cut_one", 0.02);

}  // namespace

}  // namespace bench
