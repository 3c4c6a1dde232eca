#include "calendar.h"

#include <array>
#include <cstddef>
#include <random>
#include <utility>

namespace bench {

using boost::posix_time::hours;
using boost::posix_time::minutes;
using boost::posix_time::seconds;

Slots calendarSlots(std::int64_t count) {
  // Minutes of the day.
  constexpr std::array<std::pair<int, int>, 4> kDay{
      {{360, 570}, {600, 810}, {870, 1080}, {1110, 1320}}};
  const Time midnight(boost::gregorian::date(2024, 1, 1));
  Slots slots;
  for (std::int64_t i = 0; i < count; ++i) {
    const Time day = midnight + hours(24 * (i / 4));
    const auto& [begin, end] = kDay[static_cast<std::size_t>(i % 4)];
    slots.push_back({day + minutes(begin), day + minutes(end)});
  }
  return slots;
}

Slots delayed(Slots slots, Duration delay) {
  for (Slot& slot : slots) slot = {slot.begin + delay, slot.end + delay};
  return slots;
}

Slots shuffled(Slots slots, std::uint32_t seed) {
  // Not std::shuffle, whose order depends on the standard library.
  std::mt19937 random(seed);
  for (std::size_t i = slots.size(); i > 1; --i) std::swap(slots[i - 1], slots[random() % i]);
  return slots;
}

Slots randomWindows(const Slots& slots, std::int64_t count, Duration length) {
  const Duration room = slots.back().end - slots.front().begin - length;
  std::mt19937_64 random(5);
  Slots windows;
  for (std::int64_t i = 0; i < count; ++i) {
    const auto offset = random() % static_cast<std::uint64_t>(room.total_seconds());
    const Time begin = slots.front().begin + seconds(static_cast<std::int64_t>(offset));
    windows.push_back({begin, begin + length});
  }
  return windows;
}

}  // namespace bench
