// Hand-written sets of intervals on ordered maps, the obvious alternatives to TimeBlock.
#pragma once

#include <absl/container/btree_map.h>

#include <algorithm>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <iterator>
#include <map>
#include <optional>

#include "calendar.h"
#include "interval_walks.h"

namespace bench {

/// A map from begins to ends of intervals, which are disjoint and do not touch.
template <class Map>
class IntervalMapOn {
 public:
  void add(Time begin, Time end) {
    if (slots_.empty() || slots_.rbegin()->second < begin) {
      slots_.emplace_hint(slots_.end(), begin, end);
      return;
    }
    auto first = slots_.upper_bound(begin);
    if (first != slots_.begin() && !(std::prev(first)->second < begin)) {
      --first;
      begin = first->first;
    }
    auto last = first;
    for (; last != slots_.end() && !(end < last->first); ++last) end = std::max(end, last->second);
    if (first != last && first->first == begin) {
      first->second = end;
      slots_.erase(std::next(first), last);
    } else {
      slots_.emplace_hint(slots_.erase(first, last), begin, end);
    }
  }

  void add(const IntervalMapOn& other) {
    for (const auto& [begin, end] : other.slots_) add(begin, end);
  }

  void remove(Time begin, Time end) {
    auto slot = slots_.upper_bound(begin);
    if (slot != slots_.begin() && begin < std::prev(slot)->second) --slot;
    while (slot != slots_.end() && slot->first < end) {
      const Time slotEnd = slot->second;
      if (slot->first < begin) {
        slot->second = begin;
        ++slot;
      } else {
        slot = slots_.erase(slot);
      }
      if (end < slotEnd) {
        slots_.emplace_hint(slot, end, slotEnd);
        return;
      }
    }
  }

  void remove(const IntervalMapOn& other) {
    for (const auto& [begin, end] : other.slots_) remove(begin, end);
  }

  IntervalMapOn intersection(Time begin, Time end) const {
    IntervalMapOn result;
    for (auto slot = firstEndingAfter(begin); isBefore(slot, end); ++slot) {
      result.append(std::max(slot->first, begin), std::min(slot->second, end));
    }
    return result;
  }

  bool contains(Time begin, Time end) const {
    const auto slot = slots_.upper_bound(begin);
    return slot != slots_.begin() && !(std::prev(slot)->second < end);
  }

  bool meets(Time begin, Time end) const { return isBefore(firstEndingAfter(begin), end); }

  Duration total() const {
    Duration total;
    for (const auto& [begin, end] : slots_) total += end - begin;
    return total;
  }

  Duration total(Time begin, Time end) const {
    Duration total;
    for (auto slot = firstEndingAfter(begin); isBefore(slot, end); ++slot) {
      total += std::min(slot->second, end) - std::max(slot->first, begin);
    }
    return total;
  }

  /// Returns the first `length` from `time` on, or an empty set when there is less.
  IntervalMapOn forwards(Time time, Duration length) const {
    IntervalMapOn result;
    for (auto slot = firstEndingAfter(time); slot != slots_.end(); ++slot) {
      const Time begin = std::max(slot->first, time);
      const Time end = std::min(slot->second, begin + length);
      result.append(begin, end);
      length -= end - begin;
      if (length == Duration()) return result;
    }
    return IntervalMapOn();
  }

  /// Returns the last `length` in slots that end before `time`, or an empty set when there is less.
  IntervalMapOn backwards(Time time, Duration length) const {
    IntervalMapOn result;
    auto slot = slots_.lower_bound(time);
    if (slot != slots_.begin() && !(std::prev(slot)->second < time)) --slot;
    while (slot != slots_.begin()) {
      --slot;
      const Time begin = std::max(slot->first, slot->second - length);
      result.slots_.emplace_hint(result.slots_.begin(), begin, slot->second);
      length -= slot->second - begin;
      if (length == Duration()) return result;
    }
    return IntervalMapOn();
  }

  IntervalMapOn intersection(const IntervalMapOn& other) const {
    IntervalMapOn result;
    emitCommon(slots_, other.slots_, [&](Time b, Time e) { result.append(b, e); });
    return result;
  }
  IntervalMapOn gaps(Time begin, Time end) const {
    IntervalMapOn result;
    emitGaps(firstEndingAfter(begin), slots_.end(), {begin, end},
             [&](Time b, Time e) { result.append(b, e); });
    return result;
  }
  std::optional<Time> workEnd(Time start, Duration work) const {
    return endOfWork(firstEndingAfter(start), slots_.end(), start, work);
  }
  std::optional<Time> workStart(Time end, Duration work) const {
    return startOfWork(slots_.begin(), slots_.lower_bound(end), end, work);
  }
  std::optional<Time> nextWorking(Time time) const {
    const auto slot = firstEndingAfter(time);
    return slot == slots_.end() ? std::nullopt : std::optional(std::max(slot->first, time));
  }
  std::optional<Time> lastWorking(Time time) const {
    const auto next = slots_.lower_bound(time);
    if (next == slots_.begin()) return std::nullopt;
    return std::min(std::prev(next)->second, time);
  }
  Duration walk() const { return sumOfSlots(slots_); }

  Slots slots() const {
    Slots slots;
    for (const auto& [begin, end] : slots_) slots.push_back({begin, end});
    return slots;
  }

 private:
  using Iterator = typename Map::const_iterator;

  Iterator firstEndingAfter(Time time) const {
    auto slot = slots_.upper_bound(time);
    if (slot != slots_.begin() && time < std::prev(slot)->second) --slot;
    return slot;
  }

  bool isBefore(Iterator slot, Time end) const { return slot != slots_.end() && slot->first < end; }

  void append(Time begin, Time end) { slots_.emplace_hint(slots_.end(), begin, end); }

  Map slots_;
};

using IntervalMap = IntervalMapOn<std::map<Time, Time>>;
using BtreeMap = IntervalMapOn<absl::btree_map<Time, Time>>;

}  // namespace bench
