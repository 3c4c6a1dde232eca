// Working calendars of any number of slots, and windows to ask them about.
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

/// Two shifts a day, each with a break: four slots and fourteen hours a day, none touching. 14,600
/// slots are ten years.
Slots calendarSlots(std::int64_t count);

/// The same slots, later by `delay`.
Slots delayed(Slots slots, Duration delay);

/// The same slots in random order; the same one for the same seed.
Slots shuffled(Slots slots, std::uint32_t seed);

/// `count` windows of `length` at random places between the begin and the end of `slots`, always
/// the same.
Slots randomWindows(const Slots& slots, std::int64_t count, Duration length);

}  // namespace bench
