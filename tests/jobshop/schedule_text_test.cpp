#include "ScheduleText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <set>
#include <sstream>

#include "GanttChart.h"
#include "JobColors.h"
#include "OneLine.h"
#include "shop_fixtures.h"

using jobshop::Instance;
using jobshop::Schedule;
using jobshop::ShopClock;

namespace {

const boost::posix_time::ptime kStart(boost::gregorian::date(2024, 2, 28),
                                      boost::posix_time::hours(23));

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

boost::property_tree::ptree parsedXml(const std::string& text) {
  boost::property_tree::ptree tree;
  std::istringstream stream(text);
  boost::property_tree::read_xml(stream, tree);
  return tree;
}

TEST(ScheduleText, JsonHoldsTheSchedule) {
  const Instance instance = jobshop_test::shipped("ft06");
  const Schedule schedule = jobshop_test::planned(instance, "MWKR");
  const Json::Value json =
      jobshop::scheduleJson(instance, schedule, ShopClock(kStart, boost::posix_time::minutes(30)));
  EXPECT_EQ(json["makespan"].asInt64(), schedule.makespan());
  EXPECT_EQ(json["origin"], "MWKR");
  ASSERT_EQ(json["jobs"].size(), 6u);
  int clockTimes = 0;
  for (const auto& operation : schedule.operations) {
    const Json::Value& written =
        json["jobs"][Json::ArrayIndex(operation.job)][Json::ArrayIndex(operation.position)];
    EXPECT_EQ(written["machine"].asUInt64(), operation.machine);
    EXPECT_EQ(written["start"].asInt64(), operation.start);
    EXPECT_EQ(written["end"].asInt64(), operation.end);
    if (operation.end != 5) continue;
    EXPECT_EQ(written["end_clock"], "2024-02-29 01:30:00");
    ++clockTimes;
  }
  EXPECT_GT(clockTimes, 0);
}

TEST(ScheduleText, CsvIsALineForEachOperationByStart) {
  const Schedule schedule = {{{1, 0, 0, 3, 5}, {0, 0, 0, 0, 3}, {0, 1, 1, 3, 64}}, "hand"};
  EXPECT_EQ(jobshop::scheduleCsv(schedule, {}),
            "job,operation,machine,start,end\n0,0,0,0,3\n1,0,0,3,5\n0,1,1,3,64\n");
  // An hour after the start is the 29th of a leap year.
  EXPECT_EQ(jobshop::scheduleCsv({{{0, 0, 0, 0, 60}}, ""},
                                 ShopClock(kStart, boost::posix_time::minutes(1))),
            "job,operation,machine,start,end,start_clock,end_clock\n"
            "0,0,0,0,60,2024-02-28 23:00:00,2024-02-29 00:00:00\n");
}

TEST(ScheduleText, ClocksStopAtTheEndOfTheCalendar) {
  const ShopClock clock(boost::posix_time::ptime(boost::gregorian::date(9999, 12, 31)),
                        boost::posix_time::hours(99));
  EXPECT_EQ(clock.at(0), "9999-12-31 00:00:00");
  for (const jobshop::Time time : {1LL, 1'000'000'000'000'000LL}) {
    EXPECT_THROW(clock.at(time), std::runtime_error);
  }
}

TEST(GanttChart, IsWellFormedAndShowsEveryOperation) {
  for (Instance instance :
       {jobshop_test::shipped("ft06"), jobshop_test::randomInstance(1, 100, 20, 1, false),
        jobshop_test::randomInstance(2, 1, 1, 0, false),
        jobshop_test::randomInstance(3, 20, 5, jobshop::kMaxDuration - 8, true)}) {
    instance.name = "<b>&\"\x01%s";
    const Schedule schedule = jobshop_test::planned(instance, "SPT");
    const std::string svg = jobshop::ganttChart(instance, schedule, {});
    const auto tree = parsedXml(svg);
    EXPECT_EQ(occurrences(svg, "class=\"op\""), instance.operationCount());
    EXPECT_EQ(tree.get<std::string>("svg.text"), "<b>&\" %s");
    EXPECT_EQ(svg.find("nan"), std::string::npos);
    EXPECT_EQ(svg.find("inf"), std::string::npos);
    EXPECT_LT(svg.size(), 1'000'000u);
  }
}

TEST(GanttChart, AHundredJobsHaveAHundredColors) {
  std::set<std::string> fills;
  for (std::size_t job = 0; job < 100; ++job) fills.insert(jobshop::colorOfJob(job).fill);
  EXPECT_EQ(fills.size(), 100u);
}

TEST(OneLine, FoldsBreaksAndControls) {
  const struct {
    const char* text;
    const char* line;
  } cases[] = {
      {"", ""},
      {"\r\n", ""},
      {" a\n\n  b\t\x1b[31mc\x7f ", "a b [31mc"},
      {"a\xC2\x9B"
       "31mb",
       "a 31mb"},
      {"caf\xC3\xA9 %s", "caf\xC3\xA9 %s"},
      {"cut\xC2", "cut\xC2"},
  };
  for (const auto& c : cases) EXPECT_EQ(jobshop::oneLine(c.text), c.line);
}

}  // namespace
