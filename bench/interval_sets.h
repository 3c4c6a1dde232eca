// TimeBlock and an interval set of Boost with the interface of IntervalMap.
#pragma once

#include <algorithm>
#include <boost/icl/interval_set.hpp>
#include <boost/icl/ptime.hpp>
#include <boost/icl/right_open_interval.hpp>
#include <functional>
#include <iterator>
#include <utility>
#include <vector>

#include "calendar.h"
#include "libvarrow/time/TimeBlock.h"

namespace bench {

class BlockSet {
 public:
  BlockSet() = default;
  static BlockSet atOnce(const Slots& slots) {
    std::vector<libvarrow::TimeSlot> collected;
    for (const Slot& slot : slots) collected.emplace_back(slot.begin, slot.end);
    BlockSet set;
    set.block_.addTimeBlocks(libvarrow::TimeBlock(std::move(collected)));
    return set;
  }

  void add(Time begin, Time end) { block_.addTimeBlock(begin, end); }
  void add(const BlockSet& other) { block_.addTimeBlocks(other.block_); }
  void remove(Time begin, Time end) { block_.removeTimeBlock(begin, end); }
  void remove(const BlockSet& other) { block_.removeTimeBlock(other.block_); }

  BlockSet intersection(Time begin, Time end) const {
    return BlockSet(block_.intersection(begin, end));
  }
  bool contains(Time begin, Time end) const { return block_.haveBlock(begin, end); }
  bool meets(Time begin, Time end) const { return block_.hasIntersection(begin, end); }
  Duration total() const { return block_.getTotalDur(); }
  Duration total(Time begin, Time end) const { return block_.getTotalDur(begin, end); }
  BlockSet forwards(Time time, Duration length) const {
    return BlockSet(block_.getBlockAtPos4Dur(time, length));
  }
  BlockSet backwards(Time time, Duration length) const {
    return BlockSet(block_.getBlockAtPos4DurByEnd(time, length));
  }

  Slots slots() const {
    Slots slots;
    for (const auto& slot : block_.getBlocks()) slots.push_back({slot.time_begin, slot.time_end});
    return slots;
  }

 private:
  explicit BlockSet(libvarrow::TimeBlock&& block) : block_(std::move(block)) {}

  libvarrow::TimeBlock block_;
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

  Slots slots() const {
    Slots slots;
    for (const auto& interval : set_) slots.push_back({interval.lower(), interval.upper()});
    return slots;
  }

 private:
  // Bounds that are part of the type cost the set less than bounds kept in each interval.
  using Interval = boost::icl::right_open_interval<Time>;
  using Set = boost::icl::interval_set<Time, std::less, Interval>;

  Set::const_iterator firstEndingAfter(Time time) const {
    return set_.lower_bound(Interval(time, time + Time::time_duration_type::unit()));
  }

  Set set_;
};

}  // namespace bench
