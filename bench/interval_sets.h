// TimeBlock, Timeline, an interval set of Boost and a bare vector with the interface of
// IntervalMap.
#pragma once

#include <algorithm>
#include <boost/icl/interval_set.hpp>
#include <boost/icl/ptime.hpp>
#include <boost/icl/right_open_interval.hpp>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "calendar.h"
#include "interval_walks.h"
#include "libvarrow/time/TimeBlock.h"
#include "libvarrow/time/Timeline.h"

namespace bench {

/// A TimeBlock or a Timeline.
template <class Block>
class SetOf {
 public:
  SetOf() = default;
  explicit SetOf(Block&& block) : block_(std::move(block)) {}
  static SetOf atOnce(const Slots& slots) {
    std::vector<libvarrow::TimeSlot> collected;
    for (const Slot& slot : slots) collected.emplace_back(slot.begin, slot.end);
    SetOf set;
    set.block_.addTimeBlocks(libvarrow::TimeBlock(std::move(collected)));
    return set;
  }

  void add(Time begin, Time end) { block_.addTimeBlock(begin, end); }
  void add(const SetOf& other) { block_.addTimeBlocks(other.block_); }
  void remove(Time begin, Time end) { block_.removeTimeBlock(begin, end); }
  void remove(const SetOf& other) { block_.removeTimeBlock(other.block_); }

  SetOf<libvarrow::TimeBlock> intersection(Time begin, Time end) const {
    return SetOf<libvarrow::TimeBlock>(block_.intersection(begin, end));
  }
  SetOf intersection(const SetOf& other) const { return SetOf(block_.intersection(other.block_)); }
  SetOf<libvarrow::TimeBlock> gaps(Time begin, Time end) const {
    return SetOf<libvarrow::TimeBlock>(block_.gaps(begin, end));
  }
  std::optional<Time> workEnd(Time start, Duration work) const {
    return block_.workEnd(start, work);
  }
  std::optional<Time> workStart(Time end, Duration work) const {
    return block_.workStart(end, work);
  }
  std::optional<Time> nextWorking(Time time) const { return block_.nextWorking(time); }
  std::optional<Time> lastWorking(Time time) const { return block_.lastWorking(time); }
  bool hasRoom(Time begin, Time end, Duration length) const {
    return block_.haveBlock(begin, end, length);
  }
  Duration walk() const {
    Duration sum;
    for (const auto& slot : block_) sum += slot.time_end - slot.time_begin;
    return sum;
  }
  bool contains(Time begin, Time end) const { return block_.haveBlock(begin, end); }
  bool meets(Time begin, Time end) const { return block_.hasIntersection(begin, end); }
  Duration total() const { return block_.getTotalDur(); }
  Duration total(Time begin, Time end) const { return block_.getTotalDur(begin, end); }
  SetOf forwards(Time time, Duration length) const {
    return SetOf(block_.getBlockAtPos4Dur(time, length));
  }
  SetOf backwards(Time time, Duration length) const {
    return SetOf(block_.getBlockAtPos4DurByEnd(time, length));
  }

  Slots slots() const {
    Slots slots;
    for (const auto& slot : block_) slots.push_back({slot.time_begin, slot.time_end});
    return slots;
  }

 private:
  Block block_;
};

using BlockSet = SetOf<libvarrow::TimeBlock>;
using TimelineSet = SetOf<libvarrow::Timeline>;

/// The least that a query costs: a search and a loop over a sorted vector, without any check.
class BareVector {
 public:
  /// Precondition: the slots are added in order.
  void add(Time begin, Time end) { slots_.push_back({begin, end}); }

  BareVector intersection(Time begin, Time end) const {
    BareVector result;
    const auto first = firstEndingAfter(begin);
    auto last = first;
    while (last != slots_.end() && last->begin < end) ++last;
    result.slots_.reserve(static_cast<std::size_t>(last - first));
    for (auto slot = first; slot != last; ++slot) {
      result.add(std::max(slot->begin, begin), std::min(slot->end, end));
    }
    return result;
  }
  Duration total() const {
    Duration total;
    for (const Slot& slot : slots_) total += slot.end - slot.begin;
    return total;
  }
  std::optional<Time> workEnd(Time start, Duration work) const {
    return endOfWork(firstEndingAfter(start), slots_.end(), start, work);
  }
  BareVector forwards(Time time, Duration length) const {
    BareVector result;
    for (auto slot = firstEndingAfter(time); slot != slots_.end(); ++slot) {
      const Time begin = std::max(slot->begin, time);
      const Time end = std::min(slot->end, begin + length);
      result.add(begin, end);
      length -= end - begin;
      if (length == Duration()) return result;
    }
    return BareVector();
  }

  Slots slots() const { return slots_; }

 private:
  Slots::const_iterator firstEndingAfter(Time time) const {
    return std::lower_bound(slots_.begin(), slots_.end(), time,
                            [](const Slot& slot, Time t) { return !(t < slot.end); });
  }

  Slots slots_;
};

/// Boost's set. Operations that it lacks use its iterators and hints.
class IclSet {
 public:
  void add(Time begin, Time end) { set_.add(Interval(begin, end)); }
  void add(const IclSet& other) { set_ += other.set_; }
  void remove(Time begin, Time end) { set_.subtract(Interval(begin, end)); }
  void remove(const IclSet& other) { set_ -= other.set_; }

  IclSet intersection(Time begin, Time end) const {
    // Not operator&, which copies the whole set first.
    IclSet result;
    boost::icl::add_intersection(result.set_, set_, Interval(begin, end));
    return result;
  }
  bool contains(Time begin, Time end) const {
    return boost::icl::contains(set_, Interval(begin, end));
  }
  bool meets(Time begin, Time end) const {
    return boost::icl::intersects(set_, Interval(begin, end));
  }
  Duration total() const { return boost::icl::length(set_); }
  Duration total(Time begin, Time end) const {
    Duration total;
    const auto [first, last] = set_.equal_range(Interval(begin, end));
    for (auto slot = first; slot != last; ++slot) {
      total += std::min(slot->upper(), end) - std::max(slot->lower(), begin);
    }
    return total;
  }

  IclSet forwards(Time time, Duration length) const {
    IclSet result;
    for (auto slot = firstEndingAfter(time); slot != set_.end(); ++slot) {
      const Time begin = std::max(slot->lower(), time);
      const Time end = std::min(slot->upper(), begin + length);
      result.set_.add(result.set_.end(), Interval(begin, end));
      length -= end - begin;
      if (length == Duration()) return result;
    }
    return IclSet();
  }

  IclSet backwards(Time time, Duration length) const {
    IclSet result;
    auto slot = firstEndingAfter(time);
    if (slot != set_.begin() && !(std::prev(slot)->upper() < time)) --slot;
    while (slot != set_.begin()) {
      --slot;
      const Time begin = std::max(slot->lower(), slot->upper() - length);
      result.set_.add(result.set_.begin(), Interval(begin, slot->upper()));
      length -= slot->upper() - begin;
      if (length == Duration()) return result;
    }
    return IclSet();
  }

  IclSet intersection(const IclSet& other) const {
    IclSet result;
    emitCommon(set_, other.set_, [&](Time b, Time e) { result.append(b, e); });
    return result;
  }
  IclSet gaps(Time begin, Time end) const {
    IclSet result;
    emitGaps(firstEndingAfter(begin), set_.end(), {begin, end},
             [&](Time b, Time e) { result.append(b, e); });
    return result;
  }
  std::optional<Time> workEnd(Time start, Duration work) const {
    return endOfWork(firstEndingAfter(start), set_.end(), start, work);
  }
  std::optional<Time> workStart(Time end, Duration work) const {
    return startOfWork(set_.begin(), firstBeginningFrom(end), end, work);
  }
  std::optional<Time> nextWorking(Time time) const {
    const auto slot = firstEndingAfter(time);
    return slot == set_.end() ? std::nullopt : std::optional(std::max(slot->lower(), time));
  }
  std::optional<Time> lastWorking(Time time) const {
    const auto next = firstBeginningFrom(time);
    if (next == set_.begin()) return std::nullopt;
    return std::min(std::prev(next)->upper(), time);
  }
  Duration walk() const { return sumOfSlots(set_); }

  Slots slots() const {
    Slots slots;
    for (const auto& interval : set_) slots.push_back({interval.lower(), interval.upper()});
    return slots;
  }

 private:
  // Bounds that are part of the type cost the set less than bounds kept in each interval.
  using Interval = boost::icl::right_open_interval<Time>;
  using Set = boost::icl::interval_set<Time, std::less, Interval>;

  void append(Time begin, Time end) { set_.add(set_.end(), Interval(begin, end)); }

  Set::const_iterator firstEndingAfter(Time time) const {
    return set_.lower_bound(Interval(time, time + Time::time_duration_type::unit()));
  }
  // Finds the interval that contains the last microsecond before `time`, or the first after it.
  Set::const_iterator firstBeginningFrom(Time time) const {
    const auto slot = firstEndingAfter(time - Time::time_duration_type::unit());
    return slot != set_.end() && slot->lower() < time ? std::next(slot) : slot;
  }

  Set set_;
};

}  // namespace bench
