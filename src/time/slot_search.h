// Binary searches for the slots of a block that a query needs.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstddef>
#include <vector>

#include "libvarrow/time/TimeBlock.h"

namespace libvarrow::slot_search {

using Slots = std::vector<TimeSlot>;

/// Returns whether the slots have the invariant "ordered": each begins no later than it ends and
/// ends no later than the next begins. Begins and ends are then ascending.
bool areOrdered(const Slots& slots);

/// Returns the first element of [first, last) for which `isBefore` is false, by binary search.
//
// Not std::lower_bound, whose precondition external slots may violate: this function then finds
// some element, the same on every platform.
template <class Iterator, class IsBefore>
Iterator firstNot(Iterator first, Iterator last, IsBefore isBefore) {
  auto count = static_cast<std::size_t>(last - first);
  while (count > 0) {
    const std::size_t half = count / 2;
    // All bits or none: avoids a mispredicted branch.
    const std::size_t right =
        std::size_t{0} -
        static_cast<std::size_t>(isBefore(first[static_cast<std::ptrdiff_t>(half)]));
    first += static_cast<std::ptrdiff_t>(right & (half + 1));
    count = (count + right) / 2;
  }
  return first;
}

///@{
/// Return conditions for firstNot, named after the slot that it finds.
inline auto beforeEndFrom(const boost::posix_time::ptime& time) {
  return [&](const TimeSlot& slot) { return slot.time_end < time; };
}
inline auto beforeEndAfter(const boost::posix_time::ptime& time) {
  return [&](const TimeSlot& slot) { return !(time < slot.time_end); };
}
inline auto beforeBeginFrom(const boost::posix_time::ptime& time) {
  return [&](const TimeSlot& slot) { return slot.time_begin < time; };
}
///@}

/// A range of contiguous slots. Precondition of the searches: the slots are ordered.
struct Row {
  const TimeSlot* first;
  const TimeSlot* last;

  const TimeSlot* begin() const { return first; }
  const TimeSlot* end() const { return last; }
  /// Returns the first slot that ends at `time` or later.
  const TimeSlot* endingFrom(const boost::posix_time::ptime& time) const {
    return firstNot(first, last, beforeEndFrom(time));
  }
  /// Returns the first slot that ends after `time`.
  const TimeSlot* endingAfter(const boost::posix_time::ptime& time) const {
    return firstNot(first, last, beforeEndAfter(time));
  }
  /// Returns the first slot that begins at `time` or later.
  const TimeSlot* beginningFrom(const boost::posix_time::ptime& time) const {
    return firstNot(first, last, beforeBeginFrom(time));
  }
  std::size_t size() const { return static_cast<std::size_t>(last - first); }
};

inline Row rowOf(const Slots& slots) {
  return {slots.data(), slots.data() + slots.size()};
}

/// Returns the first slot that ends at `time` or later.
inline Slots::const_iterator lowerBound(const Slots& slots, const boost::posix_time::ptime& time) {
  return firstNot(slots.begin(), slots.end(), beforeEndFrom(time));
}

/// A range of the slots that overlap or touch [from, to], in order: for (slot : SlotsNear(...)).
/// Contains all slots when `areOrdered` is false or the window is reversed, so a loop must not rely
/// on the selection.
class SlotsNear {
 public:
  SlotsNear(const Slots& slots, bool areOrdered, const boost::posix_time::ptime& from,
            const boost::posix_time::ptime& to)
      : end_{slots.data() + slots.size(), to, areOrdered && !(to < from)},
        begin_(slots.data() + (end_.isNarrowed ? lowerBound(slots, from) - slots.begin() : 0)) {}

  struct End {
    const TimeSlot* last;
    boost::posix_time::ptime to;
    bool isNarrowed;

    bool isAfterWindow(const TimeSlot& slot) const { return isNarrowed && to < slot.time_begin; }
  };
  struct Iterator {
    const TimeSlot* slot;

    const TimeSlot& operator*() const { return *slot; }
    Iterator& operator++() {
      ++slot;
      return *this;
    }
    bool operator!=(const End& end) const { return slot != end.last && !end.isAfterWindow(*slot); }
  };
  Iterator begin() const { return {begin_}; }
  const End& end() const { return end_; }

 private:
  End end_;
  const TimeSlot* begin_;
};

}  // namespace libvarrow::slot_search
