#include "time/slot_sweep.h"

#include <algorithm>

#include "time/slot_search.h"

namespace libvarrow::slot_sweep {

TimeSlot hull(TimeSlot slot, const TimeSlot& other) {
  if (other.time_begin < slot.time_begin) slot.time_begin = other.time_begin;
  if (slot.time_end < other.time_end) slot.time_end = other.time_end;
  return slot;
}

Slots unite(SlotIterator slot, SlotIterator slotsEnd, const Slots& additions) {
  Slots result;
  result.reserve(static_cast<std::size_t>(slotsEnd - slot) + additions.size());
  for (const TimeSlot& addition : additions) {
    if (addition.time_begin == addition.time_end) continue;
    for (; slot != slotsEnd && slot->time_end < addition.time_begin; ++slot) {
      result.push_back(*slot);
    }
    TimeSlot merged = addition;
    // Only the result of an earlier addition can reach this addition.
    if (!result.empty() && !(result.back().time_end < addition.time_begin)) {
      merged = hull(merged, result.back());
      result.pop_back();
    }
    for (; slot != slotsEnd && !(merged.time_end < slot->time_begin); ++slot) {
      merged = hull(merged, *slot);
    }
    // Passes the members separately: copying the slot right after its members were written would
    // stall on store forwarding.
    result.emplace_back(merged.time_begin, merged.time_end);
  }
  result.insert(result.end(), slot, slotsEnd);
  return result;
}

Slots joined(const Slots& slots) {
  Slots result;
  result.reserve(slots.size());
  for (const TimeSlot& slot : slots) {
    if (!result.empty() && slot.time_begin < result.back().time_end) {
      result.back() = hull(result.back(), slot);
    } else {
      result.push_back(slot);
    }
  }
  return result;
}

Slots subtract(const Slots& slots, bool areOrdered, Row cuts) {
  Slots result;
  result.reserve(slots.size() + static_cast<std::size_t>(cuts.last - cuts.first));
  const TimeSlot* cut = cuts.first;
  for (auto slot = slots.begin(); slot != slots.end(); ++slot) {
    const auto endsBefore = [&](const TimeSlot& other) {
      return !(slot->time_begin < other.time_end);
    };
    if (areOrdered) {
      while (cut != cuts.last && endsBefore(*cut)) ++cut;
      // Slots that end before the next cut are copied together.
      const auto run = slot;
      while (slot != slots.end() && (cut == cuts.last || !(cut->time_begin < slot->time_end))) {
        ++slot;
      }
      result.insert(result.end(), run, slot);
      if (slot == slots.end()) break;
    } else {
      cut = slot_search::firstNot(cuts.first, cuts.last, endsBefore);
    }
    emitRest(*slot, {cut, cuts.last}, [&](const TimeSlot& piece) { result.push_back(piece); });
  }
  return result;
}

void replace(Slots& slots, SlotIterator first, SlotIterator last, Row pieces) {
  const auto place = first - slots.cbegin();
  const auto replaced = last - first;
  const auto copied = std::min(replaced, pieces.last - pieces.first);
  // Inserts first, because only this step can run out of memory.
  slots.insert(last, pieces.first + copied, pieces.last);
  const auto begin = slots.begin() + place;
  std::copy_n(pieces.first, copied, begin);
  slots.erase(begin + copied, begin + replaced);
}

}  // namespace libvarrow::slot_sweep
