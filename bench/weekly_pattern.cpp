// The calendar of a year from weekly shifts: WeeklyPattern against a loop over the days.
#include "libvarrow/time/WeeklyPattern.h"

#include <benchmark/benchmark.h>

#include <utility>
#include <vector>

namespace bench {

namespace {

using boost::gregorian::date;
using boost::posix_time::hours;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using libvarrow::TimeBlock;
using libvarrow::WeeklyPattern;
using Windows = std::vector<std::pair<time_duration, time_duration>>;

// In the order of time, as the loop requires.
const Windows kShifts{{hours(6), hours(14)}, {hours(15), hours(22)}};
const Windows kBreaks{{hours(9), hours(10)}, {hours(18), hours(19)}};
const date kFirst(2024, 1, 1), kLast(2024, 12, 31), kHoliday(2024, 5, 1);
const libvarrow::Weekdays kDays = libvarrow::Weekdays::mondayToFriday();

TimeBlock byPattern() {
  WeeklyPattern pattern;
  for (const auto& [from, to] : kShifts) pattern.addShift(from, to, kDays);
  for (const auto& [from, to] : kBreaks) pattern.addBreak(from, to);
  pattern.addHoliday(kHoliday);
  return pattern.between(kFirst, kLast);
}

TimeBlock byLoop() {
  std::vector<libvarrow::TimeSlot> slots;
  for (date day = kFirst; day <= kLast; day += boost::gregorian::days(1)) {
    if (day == kHoliday || !kDays.contains(day.day_of_week().as_enum())) continue;
    const ptime midnight(day);
    for (auto [from, to] : kShifts) {
      for (const auto& [pause, resumption] : kBreaks) {
        if (pause < from || to < resumption) continue;
        slots.emplace_back(midnight + from, midnight + pause);
        from = resumption;
      }
      slots.emplace_back(midnight + from, midnight + to);
    }
  }
  return TimeBlock(std::move(slots));
}

template <TimeBlock (*make)()>
void weeklyPattern(benchmark::State& state) {
  if (byPattern() != byLoop()) return state.SkipWithError("the calendars differ");
  for (auto _ : state) {
    TimeBlock calendar = make();
    benchmark::DoNotOptimize(calendar);
  }
}

BENCHMARK(weeklyPattern<byPattern>)->Name("weekly_pattern/between")->MinTime(0.02);
BENCHMARK(weeklyPattern<byLoop>)->Name("weekly_pattern/loop")->MinTime(0.02);

}  // namespace

}  // namespace bench
