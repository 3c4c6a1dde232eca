// The rules of ordered slots, written once for every container of them.
//
// A template parameter `Ordered` is a container of ordered slots (slot_search.h) with bidirectional
// iterators and the searches of slot_search::Row.
#pragma once

#include <algorithm>
#include <array>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <vector>

#include "libvarrow/backtrace/Check.h"
#include "libvarrow/time/TimeBlock.h"
#include "time/interval_rules.h"
#include "time/saturating_time.h"
#include "time/slot_search.h"
#include "time/slot_sweep.h"

namespace libvarrow::slot_rules {

using boost::posix_time::ptime;
using boost::posix_time::time_duration;

// ---- Counts, since arithmetic of time points tests each for special values.

/// The count that represents a time: the smallest for -infinity, the largest two for
/// not-a-date-time and +infinity.
struct Count : ptime {
  static std::int64_t of(const ptime& time) { return (time.*&Count::time_).time_count(); }
};

/// Returns the count from `begin` to `end`. A slot with an infinite end has more than all real
/// times. Precondition: begin <= end.
inline std::uint64_t countBetween(const ptime& begin, const ptime& end) {
  return static_cast<std::uint64_t>(Count::of(end)) - static_cast<std::uint64_t>(Count::of(begin));
}

/// Returns the count of `work`, limited to one more than that of all real times.
inline std::uint64_t countOf(const time_duration& work) {
  static const std::uint64_t most =
      countBetween(ptime(boost::date_time::min_date_time), ptime(boost::date_time::max_date_time));
  return std::min(static_cast<std::uint64_t>(work.ticks()), most + 1);
}

inline time_duration durationOf(std::uint64_t count) {
  return time_duration(0, 0, 0, static_cast<std::int64_t>(count));
}

// ---- Union and subtraction

/// A change of ordered slots: the pieces replace [first, last).
template <class Iterator>
struct Change {
  explicit Change(Iterator place) : first(place), last(place) {}

  void add(const TimeSlot& piece) { pieces[count++] = piece; }
  slot_search::Row row() const { return {pieces.data(), pieces.data() + count}; }

  Iterator first;
  Iterator last;
  std::array<TimeSlot, 2> pieces;
  std::size_t count = 0;
};

/// Returns whether a slot from `begin` to `end` is added: an empty one is ignored. Throws when it
/// is reversed.
inline bool isToAdd(const ptime& begin, const ptime& end) {
  requireForwards(begin, end);
  return begin != end;
}

/// Returns whether the slots end before `begin`, as slots are often added in order.
template <class Slots>
bool isAfterAll(const Slots& slots, const ptime& begin) {
  return slots.empty() || slots.endTime() < begin;
}

/// Returns the union with `slot`. Precondition: `first` is the first slot that ends at the begin of
/// `slot` or later.
template <class Iterator>
Change<Iterator> addition(Iterator first, Iterator slotsEnd, TimeSlot slot) {
  Change<Iterator> change(first);
  for (; change.last != slotsEnd && !(slot.time_end < change.last->time_begin); ++change.last) {
    slot = slot_sweep::hull(slot, *change.last);
  }
  change.add(slot);
  return change;
}

/// Returns the removal of `cut`. Precondition: `first` is the first slot that ends after the begin
/// of `cut`.
template <class Iterator>
Change<Iterator> removal(Iterator first, Iterator slotsEnd, const TimeSlot& cut) {
  Change<Iterator> change(first);
  for (; change.last != slotsEnd && change.last->time_begin < cut.time_end; ++change.last) {
    slot_sweep::emitRest(*change.last, {&cut, &cut + 1},
                         [&](const TimeSlot& piece) { change.add(piece); });
  }
  return change;
}

// ---- Relation to an interval

/// Returns whether one slot contains [start, end]. Precondition: start <= end.
template <class Ordered>
bool haveAll(const Ordered& slots, const ptime& start, const ptime& end) {
  // Earlier slots end before `end`, later ones begin later than this one.
  const auto slot = slots.endingFrom(end);
  return slot != slots.end() &&
         interval_rules::contains(slot->time_begin, slot->time_end, start, end);
}

/// Returns whether a slot shares time with [start, end]. Precondition: start <= end.
template <class Ordered>
bool haveShared(const Ordered& slots, const ptime& start, const ptime& end) {
  const auto slot = slots.endingAfter(start);
  return slot != slots.end() &&
         interval_rules::overlap(slot->time_begin, slot->time_end, start, end);
}

/// Returns whether the slot has `dur` inside [start, end].
inline bool hasRoom(const TimeSlot& slot, const ptime& start, const ptime& end,
                    const time_duration& dur) {
  const ptime& lo = std::max(start, slot.time_begin);
  const ptime& hi = std::min(slot.time_end, end);
  return !(hi < lo) && !(hi - lo < dur);
}

/// Returns whether a slot has `dur` inside [start, end]. Precondition: if `areOrdered`, `slot` is
/// the first that ends at `start` or later.
template <class Iterator>
bool haveRoom(Iterator slot, Iterator slotsEnd, bool areOrdered, const ptime& start,
              const ptime& end, const time_duration& dur) {
  for (; slot != slotsEnd && !(areOrdered && end < slot->time_begin); ++slot) {
    if (hasRoom(*slot, start, end, dur)) return true;
  }
  return false;
}

/// Appends [begin, end], which does not begin before the last slot ends. Ignores an empty interval
/// and joins one that touches the last slot.
inline void append(const ptime& begin, const ptime& end, std::vector<TimeSlot>& slots) {
  if (!(begin < end)) return;
  if (!slots.empty() && slots.back().time_end == begin) {
    slots.back().time_end = end;
  } else {
    slots.emplace_back(begin, end);
  }
}

/// The slots that overlap a window, as a range.
template <class Iterator>
struct Inside {
  Iterator first;
  Iterator last;
  std::size_t count = 0;
};

template <class Ordered>
auto inside(const Ordered& slots, const ptime& start, const ptime& end) {
  const auto first = slots.endingAfter(start);
  const auto slotsEnd = slots.end();
  Inside<decltype(slots.begin())> range{first, first};
  for (; range.last != slotsEnd && range.last->time_begin < end; ++range.last) ++range.count;
  return range;
}

/// Returns the time of the slots inside [start, end]. Precondition: start <= end.
template <class Ordered>
std::vector<TimeSlot> intersection(const Ordered& slots, const ptime& start, const ptime& end) {
  const auto range = inside(slots, start, end);
  std::vector<TimeSlot> result;
  result.reserve(range.count);
  for (auto slot = range.first; slot != range.last; ++slot) {
    append(std::max(start, slot->time_begin), std::min(slot->time_end, end), result);
  }
  return result;
}

/// Returns the time of [start, end] outside the slots. Precondition: start <= end.
template <class Ordered>
std::vector<TimeSlot> gaps(const Ordered& slots, const ptime& start, const ptime& end) {
  const auto range = inside(slots, start, end);
  std::vector<TimeSlot> result;
  result.reserve(range.count + 1);
  ptime from = start;
  for (auto slot = range.first; slot != range.last; ++slot) {
    if (slot->time_begin == slot->time_end) continue;
    if (from < slot->time_begin) result.emplace_back(from, slot->time_begin);
    from = slot->time_end;
  }
  if (from < end) result.emplace_back(from, end);
  return result;
}

/// Returns the time that both containers have.
template <class Ordered, class Others>
std::vector<TimeSlot> intersection(const Ordered& as, const Others& bs) {
  std::vector<TimeSlot> result;
  auto b = bs.begin();
  if (b == bs.end()) return result;
  auto a = as.endingAfter(b->time_begin);
  if (a == as.end()) return result;
  b = bs.endingAfter(a->time_begin);
  while (a != as.end() && b != bs.end()) {
    append(std::max(a->time_begin, b->time_begin), std::min(a->time_end, b->time_end), result);
    if (a->time_end < b->time_end) {
      ++a;
    } else {
      ++b;
    }
  }
  return result;
}

// ---- Total time

/// Returns true when no time of the ordered slots is infinite or not-a-date-time.
template <class Ordered>
bool haveRealTimesOnly(const Ordered& slots) {
  return slots.begin() == slots.end() ||
         !(slots.begin()->time_begin.is_special() || std::prev(slots.end())->time_end.is_special());
}

template <class Slots>
time_duration total(const Slots& slots, bool areOrderedInRealTime) {
  if (areOrderedInRealTime) {
    // Two sums, because the additions of one would wait for each other. They may wrap around, their
    // difference is right.
    std::uint64_t ends = 0, begins = 0;
    for (const TimeSlot& slot : slots) {
      ends += static_cast<std::uint64_t>(Count::of(slot.time_end));
      begins += static_cast<std::uint64_t>(Count::of(slot.time_begin));
    }
    return durationOf(ends - begins);
  }
  time_duration sum;
  for (const TimeSlot& slot : slots) sum = sumOf(sum, slot.dur());
  return sum;
}

/// Returns the time in a window. Precondition: `slot` is the first that ends at `windowBegin` or
/// later.
template <class Iterator>
time_duration totalInside(Iterator slot, Iterator slotsEnd, const ptime& windowBegin,
                          const ptime& windowEnd) {
  time_duration sum;
  for (; slot != slotsEnd && !(windowEnd < slot->time_begin); ++slot) {
    const ptime& x = std::max(slot->time_begin, windowBegin);
    const ptime& y = std::min(slot->time_end, windowEnd);
    LIBVARROW_CHECK(x <= y);
    sum = sumOf(sum, y - x);
  }
  return sum;
}

// ---- Working time

/// Returns nothing for not-a-date-time.
inline std::optional<ptime> known(const ptime& time) {
  return time.is_not_a_date_time() ? std::nullopt : std::optional<ptime>(time);
}

template <class Ordered>
std::optional<ptime> nextWorking(const Ordered& slots, const ptime& t) {
  if (t.is_not_a_date_time()) return std::nullopt;
  auto slot = slots.endingAfter(t);
  while (slot != slots.end() && slot->time_begin == slot->time_end) ++slot;
  return slot == slots.end() ? std::nullopt : known(std::max(t, slot->time_begin));
}

template <class Ordered>
std::optional<ptime> lastWorking(const Ordered& slots, const ptime& t) {
  if (t.is_not_a_date_time()) return std::nullopt;
  auto slot = slots.beginningFrom(t);
  while (slot != slots.begin()) {
    --slot;
    if (slot->time_begin != slot->time_end) return known(std::min(slot->time_end, t));
  }
  return std::nullopt;
}

/// The slot in which work ends, and the time.
template <class Iterator>
struct WorkPlace {
  Iterator slot;
  ptime time;
};

/// Returns the end of `work` that starts at `start`, or nothing when the slots have less time.
/// Preconditions: no slot before `slot` ends after `start`, and `work` is positive.
template <class Iterator>
std::optional<WorkPlace<Iterator>> findEnd(Iterator slot, Iterator last, const ptime& start,
                                           const time_duration& work) {
  std::uint64_t left = countOf(work);
  ptime from = start;
  for (; slot != last; ++slot) {
    from = std::max(from, slot->time_begin);
    if (from.is_neg_infinity()) return WorkPlace<Iterator>{slot, from};
    const std::uint64_t length = countBetween(from, slot->time_end);
    if (left <= length) return WorkPlace<Iterator>{slot, shifted(from, durationOf(left))};
    left -= length;
  }
  return std::nullopt;
}

template <class Ordered>
std::optional<ptime> workEnd(const Ordered& slots, const ptime& start, const time_duration& work) {
  LIBVARROW_CHECK(!work.is_negative());
  if (start.is_not_a_date_time() || work.is_not_a_date_time()) return std::nullopt;
  if (work == time_duration()) return start;
  const auto found = findEnd(slots.endingAfter(start), slots.end(), start, work);
  return found ? known(found->time) : std::nullopt;
}

template <class Ordered>
std::optional<ptime> workStart(const Ordered& slots, const ptime& end, const time_duration& work) {
  LIBVARROW_CHECK(!work.is_negative());
  if (end.is_not_a_date_time() || work.is_not_a_date_time()) return std::nullopt;
  if (work == time_duration()) return end;
  std::uint64_t left = countOf(work);
  ptime until = end;
  for (auto slot = slots.beginningFrom(end); slot != slots.begin();) {
    --slot;
    until = std::min(until, slot->time_end);
    if (until.is_pos_infinity()) return until;
    const std::uint64_t length = countBetween(slot->time_begin, until);
    if (left <= length) return known(shifted(until, -durationOf(left)));
    left -= length;
  }
  return std::nullopt;
}

}  // namespace libvarrow::slot_rules
