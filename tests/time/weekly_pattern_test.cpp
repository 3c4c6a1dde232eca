// Calendars from weekly shifts: nights across midnight and across the ends of the range, breaks and
// holidays.
#include "libvarrow/time/WeeklyPattern.h"

#include "support/blocks.h"
#include "support/support.h"

namespace {

using namespace test_support;
using libvarrow::TimeBlock;
using libvarrow::Weekdays;
using libvarrow::WeeklyPattern;

// kFirstDay, hour 0, is a Friday.
TEST(WeeklyPatternTest, ShiftsRepeatLessBreaksAndHolidays) {
  WeeklyPattern pattern;
  pattern.addShift(hours(22), hours(30));
  pattern.addShift(hours(14), hours(20), Weekdays::mondayToFriday());
  pattern.addShift(hours(6), hours(14), Weekdays::mondayToFriday());
  pattern.addBreak(hours(2), hours(3), {boost::gregorian::Saturday});
  pattern.addHoliday(kFirstDay + days(2));
  const TimeBlock expected =
      blockOf({slot(0, 20), slot(22, 26), slot(27, 30), slot(46, 54), slot(78, 92), slot(94, 96)});
  EXPECT_EQ(expected, pattern.between(kFirstDay, kFirstDay + days(3)));
  TimeBlock parts = pattern.between(kFirstDay, kFirstDay);
  parts.addTimeBlocks(pattern.between(kFirstDay + days(1), kFirstDay + days(3)));
  EXPECT_EQ(expected, parts) << "adjacent ranges complete each other";
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
