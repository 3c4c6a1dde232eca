// The operations of a block, each as one plain walk over all of its slots: what the library's
// faster ways must agree with, whatever the slots are.
#pragma once

#include <algorithm>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <map>
#include <stdexcept>
#include <vector>

#include "libvarrow/time/TimeBlock.h"
#include "libvarrow/time/time_range.h"

namespace plain_block {

using boost::gregorian::date;
using boost::gregorian::days;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using libvarrow::TimeSlot;
using Slots = std::vector<TimeSlot>;

/// Thrown where the library ends the process.
struct Dies {};

inline void require(bool condition) {
  if (!condition) throw Dies();
}

inline TimeSlot slotOf(ptime begin, ptime end) {
  TimeSlot slot;
  slot.time_begin = begin;
  slot.time_end = end;
  return slot;
}

inline void add(Slots& slots, ptime begin, ptime end) {
  if (end < begin) throw std::runtime_error(libvarrow::time2str(begin) + libvarrow::time2str(end));
  if (end == begin) return;
  const auto found =
      std::lower_bound(slots.begin(), slots.end(), begin, TimeSlot::CompareByTimeEnd);
  const auto index = static_cast<std::size_t>(found - slots.begin());
  require(index == 0 || slots[index - 1].time_end < begin);
  require(index == slots.size() || slots[index].time_end >= begin);
  slots.insert(found, slotOf(begin, end));
  while (index + 1 < slots.size()) {
    const TimeSlot current = slots[index];
    TimeSlot& next = slots[index + 1];
    if (current.time_end < next.time_begin) break;
    next.time_begin = std::min(next.time_begin, current.time_begin);
    next.time_end = std::max(next.time_end, current.time_end);
    slots.erase(slots.begin() + static_cast<std::ptrdiff_t>(index));
  }
}

inline void remove(Slots& slots, ptime start, ptime end) {
  require(start <= end);
  Slots rest;
  for (const auto& [b, e] : slots) {
    if (!(b < end && start < e)) {
      rest.push_back(slotOf(b, e));
      continue;
    }
    if (b < start) rest.push_back(slotOf(b, start));
    if (end < e) rest.push_back(slotOf(end, e));
  }
  slots = rest;
}

inline bool meets(const Slots& slots, ptime start, ptime end) {
  for (const auto& [b, e] : slots) {
    require(b <= e && start <= end);
    if (b < end && start < e) return true;
  }
  return false;
}

inline bool overlaps(const Slots& slots, ptime start, ptime end) {
  require(start <= end && !slots.empty());
  if (slots.front().time_begin >= end || start >= slots.back().time_end) return false;
  return std::any_of(slots.begin(), slots.end(), [&](const TimeSlot& slot) {
    return start < slot.time_end && slot.time_begin < end;
  });
}

inline Slots inside(const Slots& slots, ptime start, ptime end) {
  Slots result;
  if (!meets(slots, start, end)) return result;
  for (const auto& [b, e] : slots) {
    require(b <= e);
    if (b < end && start < e) add(result, std::max(start, b), std::min(e, end));
  }
  return result;
}

inline bool contains(const Slots& slots, ptime start, ptime end) {
  require(start <= end);
  return std::any_of(slots.begin(), slots.end(), [&](const TimeSlot& slot) {
    return slot.time_begin <= start && end <= slot.time_end;
  });
}

inline bool containsLength(const Slots& slots, ptime start, ptime end, time_duration length) {
  return std::any_of(slots.begin(), slots.end(), [&](const TimeSlot& slot) {
    const ptime lo = std::max(start, slot.time_begin);
    const ptime hi = std::min(slot.time_end, end);
    return !(hi < lo) && !(hi - lo < length);
  });
}

inline time_duration total(const Slots& slots) {
  time_duration sum;
  for (const TimeSlot& slot : slots) sum += slot.dur();
  return sum;
}

inline time_duration total(const Slots& slots, ptime start, ptime end) {
  require(start < end);
  time_duration sum;
  auto slot = std::lower_bound(slots.begin(), slots.end(), start, TimeSlot::CompareByTimeEnd);
  for (; slot != slots.end() && !(end < slot->time_begin); ++slot) {
    const ptime x = std::max(slot->time_begin, start);
    const ptime y = std::min(slot->time_end, end);
    require(x <= y);
    sum += y - x;
  }
  return sum;
}

inline bool isPastMidnight(ptime time) {
  return time.time_of_day().total_seconds() > 0;
}

// Of an infinite time, so many that one more or less is no overflow.
inline long dayCount(const boost::gregorian::date_duration& difference) {
  return std::clamp<long>(difference.days(), -1'000'000'000, 1'000'000'000);
}

inline bool hasCompleteDays(const Slots& slots, ptime start, ptime end, int count) {
  return std::any_of(slots.begin(), slots.end(), [&](const TimeSlot& slot) {
    const ptime lo = std::max(start, slot.time_begin);
    const ptime hi = std::min(slot.time_end, end);
    return count <= dayCount(hi.date() - lo.date()) - (isPastMidnight(lo) ? 1 : 0);
  });
}

inline std::vector<bool> touchedDays(const Slots& slots, date from, date to) {
  std::vector<bool> flags(static_cast<std::size_t>((to - from).days() + 1));
  for (const auto& [b, e] : slots) {
    require(b.date() <= e.date());
    for (date day = from; day <= to; day += days(1)) {
      if (b.date() <= day && day <= e.date()) {
        flags[static_cast<std::size_t>((day - from).days())] = true;
      }
    }
  }
  return flags;
}

inline std::vector<bool> fullDays(const Slots& slots, date from, date to) {
  const long count = (to - from).days() + 1;
  std::vector<bool> flags(static_cast<std::size_t>(count));
  for (const auto& [b, e] : slots) {
    const long first = dayCount(b.date() - from) + (isPastMidnight(b) ? 1 : 0);
    const long last = dayCount(e.date() - from);
    if (!(first < last)) continue;
    if (first >= count) break;
    for (long i = std::max(first, 0L); i < std::min(last, count); ++i) {
      flags[static_cast<std::size_t>(i)] = true;
    }
  }
  return flags;
}

inline Slots after(const Slots& slots, ptime pos, time_duration length) {
  Slots result;
  auto slot = std::lower_bound(slots.begin(), slots.end(), pos, TimeSlot::CompareByTimeEnd);
  if (slot != slots.end() && length == time_duration()) {
    add(result, pos, pos + boost::posix_time::microseconds(1));
    return result;
  }
  for (; slot != slots.end(); ++slot) {
    if (length == time_duration()) return result;
    const ptime lo = std::max(pos, slot->time_begin);
    pos = std::min(lo + length, slot->time_end);
    add(result, lo, pos);
    length -= pos - lo;
  }
  return {};
}

inline Slots before(const Slots& slots, ptime pos, time_duration length) {
  Slots result;
  auto slot = std::lower_bound(slots.begin(), slots.end(), pos, TimeSlot::CompareByTimeEnd);
  if (slot == slots.begin()) return result;
  ptime hi = std::min((--slot)->time_end, pos);
  while (true) {
    if (slot->time_begin <= hi - length) {
      add(result, hi - length, hi);
      return result;
    }
    add(result, slot->time_begin, hi);
    if (slot == slots.begin()) return {};
    length -= hi - slot->time_begin;
    hi = (--slot)->time_end;
  }
}

}  // namespace plain_block
