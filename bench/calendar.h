// Working calendars of any number of slots, and windows for queries.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstdint>
#include <vector>

namespace bench {

using Time = boost::posix_time::ptime;
using Duration = boost::posix_time::time_duration;

struct Slot {
  Time begin;
  Time end;

  bool operator==(const Slot& other) const { return begin == other.begin && end == other.end; }
};

using Slots = std::vector<Slot>;

/// Returns a calendar of two shifts a day, each with a break: four slots and fourteen hours a day,
/// none touching. 14,600 slots are ten years.
Slots calendarSlots(std::int64_t count);

/// Returns the same slots, later by `delay`.
Slots delayed(Slots slots, Duration delay);

/// Returns the same slots in random order, determined by the seed.
Slots shuffled(Slots slots, std::uint32_t seed);

/// Returns `count` windows of `length` at fixed random places between the begin and the end of
/// `slots`.
Slots randomWindows(const Slots& slots, std::int64_t count, Duration length);

}  // namespace bench
