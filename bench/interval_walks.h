// Walks over the intervals of the peers, which keep them in different forms.
#pragma once

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "calendar.h"

namespace bench {

///@{
/// Returns the begin or the end of an interval.
inline const Time& beginOf(const std::pair<const Time, Time>& slot) {
  return slot.first;
}
inline const Time& endOf(const std::pair<const Time, Time>& slot) {
  return slot.second;
}
inline const Time& beginOf(const Slot& slot) {
  return slot.begin;
}
inline const Time& endOf(const Slot& slot) {
  return slot.end;
}
template <class Interval>
auto beginOf(const Interval& slot) -> decltype(slot.lower()) {
  return slot.lower();
}
template <class Interval>
auto endOf(const Interval& slot) -> decltype(slot.upper()) {
  return slot.upper();
}
///@}

/// Returns the end of the work from `slot`, the first that ends after `from`.
template <class Iterator>
std::optional<Time> endOfWork(Iterator slot, Iterator last, Time from, Duration work) {
  for (; slot != last; ++slot) {
    from = std::max(from, beginOf(*slot));
    const Duration length = endOf(*slot) - from;
    if (work <= length) return from + work;
    work -= length;
  }
  return std::nullopt;
}

/// Returns the start of the work that ends at `until`, with the slots that begin before it.
template <class Iterator>
std::optional<Time> startOfWork(Iterator first, Iterator slot, Time until, Duration work) {
  while (slot != first) {
    --slot;
    until = std::min(until, endOf(*slot));
    const Duration length = until - beginOf(*slot);
    if (work <= length) return until - work;
    work -= length;
  }
  return std::nullopt;
}

/// Calls emit(begin, end) for the gaps in the window; `slot` is the first that ends after its
/// begin.
template <class Iterator, class Emit>
void emitGaps(Iterator slot, Iterator last, const Slot& window, Emit emit) {
  Time from = window.begin;
  for (; slot != last && beginOf(*slot) < window.end; ++slot) {
    if (from < beginOf(*slot)) emit(from, beginOf(*slot));
    from = endOf(*slot);
  }
  if (from < window.end) emit(from, window.end);
}

/// Calls emit(begin, end) for the common time of two sets.
template <class Set, class Emit>
void emitCommon(const Set& as, const Set& bs, Emit emit) {
  auto a = as.begin();
  auto b = bs.begin();
  while (a != as.end() && b != bs.end()) {
    const Time begin = std::max(beginOf(*a), beginOf(*b));
    const Time end = std::min(endOf(*a), endOf(*b));
    if (begin < end) emit(begin, end);
    if (endOf(*a) < endOf(*b)) {
      ++a;
    } else {
      ++b;
    }
  }
}

template <class Set>
Duration sumOfSlots(const Set& set) {
  Duration sum;
  for (const auto& slot : set) sum += endOf(slot) - beginOf(slot);
  return sum;
}

}  // namespace bench
