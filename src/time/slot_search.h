// Finding the slots of a block that a query has to look at.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
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
  auto count = last - first;
  while (count > 0) {
    const auto half = count / 2;
    const bool goRight = isBefore(first[half]);
    first += goRight ? half + 1 : 0;
    count = goRight ? count - half - 1 : half;
  }
  return first;
}

/// The slots that share time with [from, to] or touch it, in order: for (slot : SlotsNear(...)).
/// Where they may not be searched for (`isSearchable` is false, or the window is reversed) these
/// are all slots, so a loop over them must not rely on the choice.
class SlotsNear {
 public:
  SlotsNear(const Slots& slots, bool isSearchable, const boost::posix_time::ptime& from,
            const boost::posix_time::ptime& to)
      : end_{slots.data() + slots.size(), to, isSearchable && !(to < from)},
        begin_(slots.data() +
               (end_.isNarrowed ? TimeBlock::lowerBound(slots, from) - slots.begin() : 0)) {}

  struct End {
    const TimeSlot* last;
    boost::posix_time::ptime to;
    bool isNarrowed;
  };
  struct Iterator {
    const TimeSlot* slot;

    const TimeSlot& operator*() const { return *slot; }
    Iterator& operator++() {
      ++slot;
      return *this;
    }
    bool operator!=(const End& end) const {
      return slot != end.last && !(end.isNarrowed && end.to < slot->time_begin);
    }
  };
  Iterator begin() const { return {begin_}; }
  const End& end() const { return end_; }

 private:
  End end_;
  const TimeSlot* begin_;
};

}  // namespace libvarrow::slot_search
