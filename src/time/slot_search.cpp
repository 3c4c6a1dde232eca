#include "time/slot_search.h"

namespace libvarrow::slot_search {

bool areOrdered(const Slots& slots) {
  const TimeSlot* before = nullptr;
  for (const TimeSlot& slot : slots) {
    if (slot.time_end < slot.time_begin) return false;
    if (before != nullptr && slot.time_begin < before->time_end) return false;
    before = &slot;
  }
  return true;
}

}  // namespace libvarrow::slot_search
