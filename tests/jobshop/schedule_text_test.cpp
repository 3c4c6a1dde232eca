// Schedules as files, charts and lines for people and programs.
#include "ScheduleText.h"

#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/property_tree/xml_parser.hpp>

#include "OneLine.h"
#include "gantt/GanttChart.h"
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

TEST(GanttChart, IsWellFormedAndShowsEveryOperation) {
  for (Instance instance : {randomInstance(1, 100, 20, 1), randomInstance(2, 1, 1, 0),
                            randomInstance(3, 20, 5, kMaxDuration - 8)}) {
    instance.name = "<b>&\"\x01%s";
    const std::string svg = ganttChart(instance, planned(instance, "SPT"), {}, {});
    boost::property_tree::ptree tree;
    std::istringstream stream(svg);
    boost::property_tree::read_xml(stream, tree);
    EXPECT_EQ(tree.get<std::string>("svg.text"), "<b>&\" %s");
    EXPECT_EQ(tree.get_child("svg").count("g"), instance.operationCount());
    EXPECT_EQ(svg.find("nan"), std::string::npos);
    EXPECT_EQ(svg.find("inf"), std::string::npos);
    EXPECT_LT(svg.size(), 1'000'000u);
  }
}

TEST(OneLine, FoldsBreaksAndControls) {
  const std::pair<const char*, const char*> cases[] = {
      {"\r\n", ""},
      {" a\n\n  b\t\x1b[31mc\x7f ", "a b [31mc"},
      {"a\xC2\x9B[31mb", "a [31mb"},
      {"caf\xC3\xA9 %s cut\xC2", "caf\xC3\xA9 %s cut\xC2"}};
  for (const auto& [text, line] : cases) EXPECT_EQ(oneLine(text), line);
}

}  // namespace
