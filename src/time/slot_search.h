// Finding the slots of a block that a query has to look at.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstddef>
#include <vector>

#include "libvarrow/time/TimeBlock.h"

namespace libvarrow::slot_search {

using Slots = std::vector<TimeSlot>;

/// Whether each slot begins no later than it ends and ends no later than the next begins. Begins
/// and ends then ascend.
bool areOrdered(const Slots& slots);

/// Of ordered slots: whether no time among them is infinite or not-a-date-time.
bool haveRealTimesOnly(const Slots& slots);

/// The first element of [first, last) that `isBefore` is false for, by halves.
//
// Not std::lower_bound, whose precondition slots that came from outside may break: this one then
// finds some element, the same on every platform.
template <class Iterator, class IsBefore>
Iterator firstNot(Iterator first, Iterator last, IsBefore isBefore) {
  auto count = static_cast<std::size_t>(last - first);
  while (count > 0) {
    const std::size_t half = count / 2;
    // All bits or none, and no branch: the processor would guess every second one wrong.
    const std::size_t right =
        std::size_t{0} -
        static_cast<std::size_t>(isBefore(first[static_cast<std::ptrdiff_t>(half)]));
    first += static_cast<std::ptrdiff_t>(right & (half + 1));
    count = (count + right) / 2;
  }
  return first;
}

/// The first slot that ends at `time` or later.
inline Slots::const_iterator lowerBound(const Slots& slots, const boost::posix_time::ptime& time) {
  return firstNot(slots.begin(), slots.end(),
                  [&](const TimeSlot& slot) { return TimeSlot::CompareByTimeEnd(slot, time); });
}

/// The slots that share time with [from, to] or touch it, in order: for (slot : SlotsNear(...)).
/// Where they may not be searched for (`isSearchable` is false, or the window is reversed) these
/// are all slots, so a loop over them must not rely on the choice.
class SlotsNear {
 public:
  SlotsNear(const Slots& slots, bool isSearchable, const boost::posix_time::ptime& from,
            const boost::posix_time::ptime& to)
      : end_{slots.data() + slots.size(), to, isSearchable && !(to < from)},
        begin_(slots.data() + (end_.isNarrowed ? lowerBound(slots, from) - slots.begin() : 0)) {}

  struct End {
    const TimeSlot* last;
    boost::posix_time::ptime to;
    bool isNarrowed;

    bool isBehind(const TimeSlot& slot) const { return isNarrowed && to < slot.time_begin; }
  };
  struct Iterator {
    const TimeSlot* slot;

    const TimeSlot& operator*() const { return *slot; }
    Iterator& operator++() {
      ++slot;
      return *this;
    }
    bool operator!=(const End& end) const { return slot != end.last && !end.isBehind(*slot); }
  };
  /// How many there are.
  std::size_t count() const {
    const auto isInside = [&](const TimeSlot& slot) { return !end_.isBehind(slot); };
    return static_cast<std::size_t>(firstNot(begin_, end_.last, isInside) - begin_);
  }

  Iterator begin() const { return {begin_}; }
  const End& end() const { return end_; }

 private:
  End end_;
  const TimeSlot* begin_;
};

}  // namespace libvarrow::slot_search
