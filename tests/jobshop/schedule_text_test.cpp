// Schedules as files, charts and lines for people and programs.
#include "ScheduleText.h"

#include <boost/date_time/posix_time/posix_time.hpp>

#include "shop_fixtures.h"
#include "support/support.h"

namespace {

namespace posix_time = boost::posix_time;
using namespace jobshop;
using namespace jobshop_test;
using namespace test_support;

TEST(ScheduleText, JsonIsByJobAndCsvByStartWithClockTimesWhenThereIsAClock) {
  const Instance instance = parseInstance("2 2\n0 3 1 60\n0 2 1 1\n", "x.txt");
  const Schedule schedule = {{{0, 1, 1, 5, 65}, {1, 0, 0, 0, 2}, {0, 0, 0, 2, 5}}, "hand"};
  const ShopClock clock(posix_time::time_from_string("2024-02-28 23:00:00"),
                        posix_time::minutes(1));
  // Read back: the text is what counts, not whether a number is kept with a sign.
  EXPECT_EQ(json(scheduleJson(instance, schedule, {}, {}).toStyledString()), json(R"({
      "instance": "x", "makespan": 65, "lower_bound": 63, "origin": "hand", "jobs": [
        [{"machine": 0, "start": 2, "end": 5}, {"machine": 1, "start": 5, "end": 65}],
        [{"machine": 0, "start": 0, "end": 2}]]})"));
  const Json::Value last = scheduleJson(instance, schedule, {}, clock)["jobs"][0][1];
  EXPECT_EQ(last["start_clock"], "2024-02-28 23:05:00");
  EXPECT_EQ(last["end_clock"], "2024-02-29 00:05:00");
  EXPECT_EQ(scheduleCsv(schedule, {}, {}),
            "job,operation,machine,start,end\n1,0,0,0,2\n0,0,0,2,5\n0,1,1,5,65\n");
  EXPECT_EQ(scheduleCsv({{{0, 0, 0, 0, 60}}, ""}, {}, clock),
            "job,operation,machine,start,end,start_clock,end_clock\n"
            "0,0,0,0,60,2024-02-28 23:00:00,2024-02-29 00:00:00\n");
}

TEST(ScheduleText, ClocksStopAtTheEndOfTheCalendar) {
  const ShopClock clock(posix_time::time_from_string("9999-12-31 00:00:00"), posix_time::hours(99));
  EXPECT_EQ(clock.at(0), "9999-12-31 00:00:00");
  EXPECT_THROW(clock.at(1), std::runtime_error);
  EXPECT_THROW(clock.at(1'000'000'000'000'000), std::runtime_error);
}

}  // namespace
