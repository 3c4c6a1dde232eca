// Union and subtraction of many slots in one pass.
#pragma once

#include <cstddef>
#include <vector>

#include "libvarrow/time/TimeBlock.h"
#include "time/slot_search.h"

namespace libvarrow::slot_sweep {

using slot_search::Slots;
using SlotIterator = Slots::const_iterator;

/// Slots that lie in a row.
struct Row {
  const TimeSlot* first;
  const TimeSlot* last;
};

/// From the earlier begin to the later end.
TimeSlot hull(TimeSlot slot, const TimeSlot& other);

/// What is left of `slot` when the ordered slots `cuts` are taken out one by one; `emit` gets the
/// pieces in order.
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

/// The ordered slots [slot, slotsEnd) with `additions` merged into them as addTimeBlock merges one
/// after the other. The begins of `additions` ascend, and none is reversed.
Slots unite(SlotIterator slot, SlotIterator slotsEnd, const Slots& additions);

/// The slots with those that overlap made into one; those that touch stay apart. Their begins
/// ascend, and none is reversed.
Slots joined(const Slots& slots);

/// What the ordered slots `cuts` leave of `slots`, each of which is cut where it stands; their own
/// order matters only for speed.
Slots subtract(const Slots& slots, bool areOrdered, Row cuts);

/// Puts `pieces` in the place of [first, last), moving what follows once. Changes nothing when
/// memory runs out.
void replace(Slots& slots, SlotIterator first, SlotIterator last, Row pieces);

/// Reserves memory for `more` further slots, growing as insertion does.
void makeRoom(Slots& slots, std::size_t more);

}  // namespace libvarrow::slot_sweep
