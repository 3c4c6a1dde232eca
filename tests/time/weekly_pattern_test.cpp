// Calendars from weekly shifts: nights across midnight and across the ends of the range, breaks and
// holidays, against a model that asks hour by hour.
#include "libvarrow/time/WeeklyPattern.h"

#include <random>
#include <set>
#include <vector>

#include "support/HourSet.h"
#include "support/blocks.h"
#include "support/support.h"

namespace {

using namespace test_support;
using libvarrow::TimeBlock;
using libvarrow::Weekdays;
using libvarrow::WeeklyPattern;

struct Window {
  int from, to;
  Weekdays days;
  bool isBreak;

  // Returns whether the window has the hour when it begins on `day`.
  bool has(int day, int hour) const {
    const auto weekday = (kFirstDay + boost::gregorian::days(day)).day_of_week().as_enum();
    return days.contains(weekday) && 24 * day + from <= hour && hour < 24 * day + to;
  }
};

// Asks for each hour whether a shift has it that begins on a working day, and no break.
TEST(WeeklyPatternTest, RandomShiftsBreaksAndHolidaysAreThoseOfEachHour) {
  std::mt19937 random(5);
  const auto number = [&](int limit) { return static_cast<int>(random() % unsigned(limit)); };
  for (int round = 0; round < 500 && !HasFailure(); ++round) {
    WeeklyPattern pattern;
    std::vector<Window> windows(static_cast<std::size_t>(number(6)), Window{0, 0, {}, false});
    for (auto& [from, to, weekdays, isBreak] : windows) {
      from = number(24), to = from + 1 + number(24), isBreak = number(3) == 0;
      for (int day = 0; day < 7; ++day) {
        if (number(2) == 0) weekdays.add(static_cast<boost::date_time::weekdays>(day));
      }
      isBreak ? pattern.addBreak(hours(from), hours(to), weekdays)
              : pattern.addShift(hours(from), hours(to), weekdays);
    }
    std::set<int> holidays;
    for (int i = number(4); i > 0; --i) holidays.insert(number(16) - 1);
    for (const int day : holidays) pattern.addHoliday(kFirstDay + days(day));

    HourSet expected;
    for (int hour = 0; hour < 24 * 14; ++hour) {
      bool isShift = false, isBreak = false;
      for (const int day : {hour / 24 - 1, hour / 24}) {
        for (const Window& window : windows) {
          if (!window.has(day, hour)) continue;
          isBreak = isBreak || window.isBreak;
          isShift = isShift || (!window.isBreak && holidays.count(day) == 0);
        }
      }
      if (isShift && !isBreak) expected.addTimeBlock(at(hour), at(hour + 1));
    }
    const date last = kFirstDay + days(13), middle = kFirstDay + days(number(13));
    EXPECT_EQ(TimeBlock(expected.getBlocks()), pattern.between(kFirstDay, last));
    TimeBlock parts = pattern.between(kFirstDay, middle);
    parts.addTimeBlocks(pattern.between(middle + days(1), last));
    EXPECT_EQ(TimeBlock(expected.getBlocks()), parts) << "adjacent ranges complete each other";
  }
}

TEST(WeeklyPatternTest, ReachesTheFirstAndTheLastDayThatExist) {
  WeeklyPattern pattern;
  pattern.addShift(hours(0), hours(24));
  const date first(boost::date_time::min_date_time), last(boost::date_time::max_date_time);
  EXPECT_EQ(hours(24), pattern.between(first, first).getTotalDur());
  EXPECT_FALSE(pattern.between(last, last).endTime().is_special());
  EXPECT_NE("no error",
            errorOf([&] { pattern.between(first, date(boost::date_time::pos_infin)); }));
}

TEST(WeeklyPatternTest, RefusesWindowsThatAreNotOfOneDay) {
  const time_duration endless(boost::date_time::pos_infin);
  for (const auto& [from, to] : {std::pair(hours(-1), hours(4)),
                                 {hours(24), hours(25)},
                                 {hours(8), hours(8)},
                                 {hours(8), hours(33)}}) {
    EXPECT_NE("no error", errorOf([from = from, to = to] { WeeklyPattern().addBreak(from, to); }));
  }
  EXPECT_EQ(
      "weekly window from 08:00:00 to +infinity: must begin from 0:00 to 24:00 and end after its "
      "begin, at most 24 hours later",
      errorOf([&] { WeeklyPattern().addShift(hours(8), endless); }));
}

}  // namespace
