// Union and subtraction of many slots in one pass.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "libvarrow/time/TimeBlock.h"
#include "time/slot_search.h"

namespace libvarrow::slot_sweep {

using slot_search::Row;
using slot_search::Slots;
using SlotIterator = Slots::const_iterator;

/// Returns the slot from the earlier begin to the later end.
TimeSlot hull(TimeSlot slot, const TimeSlot& other);

/// Subtracts the ordered slots `cuts` one by one from `slot`; calls `emit` for the remaining
/// pieces, in order.
template <class Emit>
void emitRest(TimeSlot slot, Row cuts, Emit emit) {
  for (const TimeSlot* cut = cuts.first; cut != cuts.last && cut->time_begin < slot.time_end;
       ++cut) {
    if (!(slot.time_begin < cut->time_end)) continue;
    if (slot.time_begin < cut->time_begin) emit(TimeSlot(slot.time_begin, cut->time_begin));
    if (!(cut->time_end < slot.time_end)) return;
    slot.time_begin = cut->time_end;
  }
  emit(slot);
}

/// Returns the ordered slots [slot, slotsEnd) with `additions` merged into them, as addTimeBlock
/// merges them one by one. Precondition: the begins of `additions` ascend, and none is reversed.
Slots unite(SlotIterator slot, SlotIterator slotsEnd, const Slots& additions);

/// Returns the slots with overlapping ones joined; slots that only touch stay separate.
/// Precondition: the begins ascend, and no slot is reversed.
Slots joined(const Slots& slots);

/// Returns the parts of `slots` that the ordered slots `cuts` leave. Each slot is cut in its place;
/// the order of `slots` matters only for speed.
Slots subtract(const Slots& slots, bool areOrdered, Row cuts);

/// Replaces [first, last) by `pieces` and moves the following slots once. Changes nothing when
/// memory runs out.
void replace(Slots& slots, SlotIterator first, SlotIterator last, Row pieces);

/// Reserves memory for `more` further elements, growing as insertion does.
template <class T>
void makeRoom(std::vector<T>& elements, std::size_t more) {
  if (elements.capacity() - elements.size() >= more) return;
  elements.reserve(elements.size() + std::max(elements.size(), more));
}

}  // namespace libvarrow::slot_sweep
