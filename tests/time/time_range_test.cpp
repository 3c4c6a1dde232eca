// Predicates on intervals and daily windows, and time text.
#include "libvarrow/time/time_range.h"

#include <gtest/gtest.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <csignal>
#include <functional>

#include "support/ChildProcess.h"

namespace {

using namespace libvarrow;
using boost::gregorian::date;
using boost::posix_time::hours;
using boost::posix_time::microseconds;
using boost::posix_time::minutes;
using boost::posix_time::ptime;
using boost::posix_time::seconds;
using boost::posix_time::time_duration;

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
  for (const Case& c : cases) {
    EXPECT_EQ(c.contains, isContain(at(c.s1), at(c.e1), at(c.s2), at(c.e2)))
        << c.s1 << ' ' << c.e1 << ' ' << c.s2 << ' ' << c.e2;
    EXPECT_EQ(c.overlaps, isOverlap(at(c.s1), at(c.e1), at(c.s2), at(c.e2)))
        << c.s1 << ' ' << c.e1 << ' ' << c.s2 << ' ' << c.e2;
  }
}

TEST(TimeRangeTest, ADailyWindowIsClosedAndMayRunPastMidnight) {
  struct Case {
    time_duration begin, end;
    ptime t;
    bool inside;
  };
  const Case cases[] = {
      {hours(22), hours(30), at(23), true},    {hours(22), hours(30), at(0), true},
      {hours(22), hours(30), at(6), true},     {hours(22), hours(30), at(6, 1), false},
      {hours(22), hours(30), at(22), true},    {hours(22), hours(30), at(21, 59), false},
      {hours(8), hours(10), at(8), true},      {hours(8), hours(10), at(10), true},
      {hours(8), hours(10), at(10, 1), false}, {hours(8), hours(24), at(0), false},
      {hours(-2), hours(3), at(2), true}};
  for (const Case& c : cases) {
    EXPECT_EQ(c.inside, isInRange(c.begin, c.end, c.t)) << c.begin << ' ' << c.end << ' ' << c.t;
  }
}

TEST(TimeRangeTest, AnIntervalMeetsADailyWindowAtItsEndsToo) {
  struct Case {
    time_duration begin, end;
    ptime s, e;
    bool meets;
  };
  const Case cases[] = {
      {hours(22), hours(30), at(3), at(4), true},      {hours(22), hours(30), at(6), at(7), true},
      {hours(22), hours(30), at(6, 1), at(7), false},  {hours(8), hours(10), at(10), at(11), true},
      {hours(8), hours(10), at(10, 1), at(11), false}, {hours(8), hours(10), at(6), at(8), true},
      {hours(8), hours(10), at(6), at(7, 59), false},  {hours(8), hours(10), at(11), at(32), true},
      {hours(8), hours(10), at(11), at(31, 59), false}};
  for (const Case& c : cases) {
    EXPECT_EQ(c.meets, isOverlap(c.begin, c.end, c.s, c.e))
        << c.begin << ' ' << c.end << ' ' << c.s << ' ' << c.e;
  }
}

TEST(TimeRangeTest, WindowsAndIntervalsThatAreNoneEndTheProcess) {
  struct Case {
    std::function<void()> call;
    const char* report;
  };
  const Case cases[] = {
      {[] { isContain(at(9), at(8), at(8), at(9)); }, "Assertion `s1 <= e1' failed"},
      {[] { isContain(at(8), at(9), at(9), at(8)); }, "Assertion `s2 <= e2' failed"},
      {[] { isOverlap(at(9), at(8), at(8), at(9)); }, "Assertion `s1 <= e1' failed"},
      {[] { isOverlap(at(8), at(9), at(9), at(8)); }, "Assertion `s2 <= e2' failed"},
      {[] { isInRange(hours(10), hours(10), at(8)); }, "BackTraceException"},
      {[] { isInRange(hours(24), hours(25), at(8)); }, "BackTraceException"},
      {[] { isInRange(hours(1), hours(25), at(8)); }, "BackTraceException"},
      {[] { isOverlap(hours(10), hours(10), at(8), at(9)); }, "BackTraceException"},
      {[] { isOverlap(hours(8), hours(10), at(8), at(8)); }, "BackTraceException"},
      {[] { isOverlap(hours(24), hours(25), at(8), at(9)); }, "BackTraceException"},
      {[] { isOverlap(hours(1), hours(25), at(8), at(9)); }, "BackTraceException"}};
  for (const Case& c : cases) {
    const test_support::ChildResult child = test_support::runInChild(c.call);
    EXPECT_EQ(SIGABRT, child.signal);
    EXPECT_NE(std::string::npos, child.errors.find(c.report)) << child.errors;
  }
}

TEST(TimeTextTest, EveryFormHasItsText) {
  const date day(2024, 3, 5);
  const ptime time(day, time_duration(7, 8, 9) + microseconds(999999));
  const time_duration length(26, 5, 3);
  EXPECT_EQ("2024-03-05", time2str(day));
  EXPECT_EQ("2024-03-05 07:08:09", time2str(time));
  EXPECT_EQ("26:05:03", time2str(length));
  EXPECT_EQ("2024-03-05", time2strIgnoreSecond(day));
  EXPECT_EQ("2024-03-05 07:08", time2strIgnoreSecond(time));
  EXPECT_EQ("26:05", time2strIgnoreSecond(length));
  EXPECT_EQ("2024-03-05 07:08", time2strNew(time));
  EXPECT_EQ(time2str(day), time2str(&day));
  EXPECT_EQ(time2str(time), time2str(&time));
  EXPECT_EQ(time2str(length), time2str(&length));
  EXPECT_EQ(time2strIgnoreSecond(day), time2strIgnoreSecond(&day));
  EXPECT_EQ(time2strIgnoreSecond(time), time2strIgnoreSecond(&time));
  EXPECT_EQ(time2strIgnoreSecond(length), time2strIgnoreSecond(&length));
  EXPECT_EQ(time2strNew(time), time2strNew(&time));
  EXPECT_EQ(time2strNew(length), time2strNew(&length));
}

TEST(TimeTextTest, DurationsOfAnySizeAndSignAreWritten) {
  struct Case {
    time_duration length;
    const char* text;
    const char* inWords;
  };
  const Case cases[] = {
      {hours(1) + seconds(30), "01:00:30", "01小时30秒"},
      {minutes(59), "00:59:00", "59分钟"},
      {microseconds(999999), "00:00:00", ""},
      {hours(123) + minutes(4), "123:04:00", "123小时04分钟"},
      {-hours(1) - minutes(30), "-1:-30:00", ""},
      {-microseconds(1500000), "00:00:-1", ""},
      {hours(2147483647), "2147483647:00:00", "2147483647小时"},
      {time_duration(boost::posix_time::not_a_date_time), "not-a-date-time", "not-a-date-time"},
      {time_duration(boost::posix_time::pos_infin), "+infinity", "+infinity"}};
  for (const Case& c : cases) {
    EXPECT_EQ(c.text, time2str(c.length));
    EXPECT_EQ(c.inWords, time2strNew(c.length));
  }
}

TEST(TimeTextTest, SpecialValuesGiveTheirNames) {
  EXPECT_EQ("not-a-date-time", time2str(ptime()));
  EXPECT_EQ("-infinity", time2strIgnoreSecond(ptime(boost::posix_time::neg_infin)));
  EXPECT_EQ("+infinity", time2str(date(boost::gregorian::pos_infin)));
  EXPECT_EQ("not-a-date-time",
            time2strIgnoreSecond(time_duration(boost::posix_time::not_a_date_time)));
}

}  // namespace
