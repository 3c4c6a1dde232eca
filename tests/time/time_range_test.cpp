// Predicates on intervals and daily windows, and time text.
#include "libvarrow/time/time_range.h"

#include <boost/date_time/posix_time/posix_time.hpp>

#include "libvarrow/utility/UTFConverter.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using boost::gregorian::date;
using libvarrow::utility::fromUtf8;
using namespace test_support;
using namespace boost::posix_time;

ptime at(int hour, int minute = 0) {
  return ptime(date(2024, 3, 5), hours(hour) + minutes(minute));
}

TEST(TimeRangeTest, ContainmentIsClosedAndOverlapOpen) {
  struct Case {
    int s1, e1, s2, e2;
    bool contains, overlaps;
  };
  const Case cases[] = {
      {8, 10, 8, 10, true, true},  {8, 10, 9, 9, true, true},    {8, 10, 10, 12, false, false},
      {8, 10, 6, 8, false, false}, {8, 10, 10, 10, true, false}, {8, 8, 8, 8, true, false},
      {8, 10, 9, 11, false, true}, {8, 10, 7, 11, false, true},  {8, 8, 7, 9, false, true}};
  for (const auto& [s1, e1, s2, e2, contains, overlaps] : cases) {
    EXPECT_EQ(contains, isContain(at(s1), at(e1), at(s2), at(e2))) << s2 << ' ' << e2;
    EXPECT_EQ(overlaps, isOverlap(at(s1), at(e1), at(s2), at(e2))) << s2 << ' ' << e2;
  }
}

TEST(TimeRangeTest, ADailyWindowIsClosedAndMayRunPastMidnight) {
  const auto isInside = [](int b, int e, ptime t) { return isInRange(hours(b), hours(e), t); };
  for (const ptime& t : {at(22), at(0), at(6)}) EXPECT_TRUE(isInside(22, 30, t)) << t;
  for (const ptime& t : {at(21, 59), at(6, 1)}) EXPECT_FALSE(isInside(22, 30, t)) << t;
  EXPECT_TRUE(isInside(8, 10, at(10)));
  EXPECT_FALSE(isInside(8, 10, at(10, 1)));
  EXPECT_FALSE(isInside(8, 24, at(0)));
  EXPECT_TRUE(isInside(-2, 3, at(2)));
}

TEST(TimeRangeTest, AnIntervalOverlapsADailyWindowAtItsEndsToo) {
  EXPECT_TRUE(isOverlap(hours(22), hours(30), at(6), at(7)));
  EXPECT_FALSE(isOverlap(hours(22), hours(30), at(6, 1), at(7)));
  EXPECT_TRUE(isOverlap(hours(8), hours(10), at(10), at(11)));
  EXPECT_TRUE(isOverlap(hours(8), hours(10), at(6), at(8)));
  EXPECT_FALSE(isOverlap(hours(8), hours(10), at(6), at(7, 59)));
  EXPECT_TRUE(isOverlap(hours(8), hours(10), at(11), at(32)));
  EXPECT_FALSE(isOverlap(hours(8), hours(10), at(11), at(31, 59)));
}

TEST(TimeRangeTest, InvalidWindowsAndIntervalsAbort) {
  expectAbort("Assertion `s1 <= e1' failed", [] { isContain(at(9), at(8), at(8), at(9)); });
  expectAbort("time_range.cpp", [] { isOverlap(at(9), at(8), at(8), at(9)); });
  expectAbort("Assertion `s2 <= e2' failed", [] { isOverlap(at(8), at(9), at(9), at(8)); });
  const int ages = 2147483647;
  for (const auto& [b, e] : {std::pair(10, 10), {24, 25}, {1, 25}, {-ages, ages}}) {
    const hours begin(b), end(e);
    expectAbort("daily window from " + time2str(begin), [&] { isInRange(begin, end, at(8)); });
    expectAbort("daily window", [&] { isOverlap(begin, end, at(8), at(9)); });
  }
  expectAbort("interval from", [] { isOverlap(hours(8), hours(10), at(8), at(8)); });
}

// Returns the text forms of a value or of the target of a pointer.
template <class T>
std::string texts(const T& time) {
  return time2str(time) + '|' + time2strIgnoreSecond(time) + '|' + time2strNew(time);
}

TEST(TimeTextTest, EveryFormWritesValuesAndPointers) {
  const date day(2024, 3, 5);
  const ptime time(day, time_duration(7, 8, 9) + microseconds(999999));
  const time_duration length(26, 5, 3);
  EXPECT_EQ("2024-03-05 07:08:09|2024-03-05 07:08|2024-03-05 07:08", texts(time));
  EXPECT_EQ(texts(time), texts(&time));
  EXPECT_EQ("26:05:03|26:05|" + fromUtf8("26小时05分钟03秒"), texts(length));
  EXPECT_EQ(texts(length), texts(&length));
  EXPECT_EQ("2024-03-05|2024-03-05", time2str(day) + '|' + time2strIgnoreSecond(day));
  EXPECT_EQ("2024-03-05|2024-03-05", time2str(&day) + '|' + time2strIgnoreSecond(&day));
  // Long durations and special values.
  EXPECT_EQ("01:00:30|01:00|" + fromUtf8("01小时30秒"),
            texts(time_duration(1, 0, 30) + microseconds(999999)));
  EXPECT_EQ("-1:-30:-1|-1:-30|", texts(-time_duration(1, 30, 1) - microseconds(500000)));
  EXPECT_EQ("2147483647:00:00|2147483647:00|" + fromUtf8("2147483647小时"),
            texts(hours(2147483647)));
  EXPECT_EQ("not-a-date-time|not-a-date-time|not-a-date-time",
            texts(time_duration(boost::posix_time::not_a_date_time)));
  EXPECT_EQ("-infinity|-infinity|-infinity", texts(ptime(boost::posix_time::neg_infin)));
}

}  // namespace
