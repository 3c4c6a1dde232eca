// The schedules that the dispatching rules build.
#include <gtest/gtest.h>

#include <utility>

#include "DispatchRules.h"
#include "LowerBound.h"
#include "ScheduleChecker.h"
#include "shop_fixtures.h"

using namespace jobshop;
using namespace jobshop_test;

namespace {

TEST(Dispatching, EveryRuleGivesAFeasibleScheduleInWorkingTime) {
  const Time shortestTimes[] = {0, 1, kMaxDuration - 8};
  // Breaks and closed hours that overlap and end within time units, a shift past midnight.
  const std::string keys = R"("start": "2024-02-28 05:50:00", "time_unit": "00:07:00",
      "shifts": [{"from": "20:00:00", "to": "30:00:00"}, {"from": "04:00:00", "to": "09:30:00"}],
      "breaks": [{"from": "05:00:00", "to": "05:10:00", "days": ["thu", "fri"]}],
      "closed": [{"timeBegin": "2024-02-29 04:30:00", "timeEnd": "2024-02-29 05:05:00"}],
      "machines": [{"machine": 0, "efficiency": 0.7, "shifts": []}])";
  for (std::uint32_t seed = 0; seed < 60; ++seed) {
    const std::size_t jobs = 1 + seed % 11, machines = 1 + seed % 7;
    const Instance always = randomInstance(seed, jobs, machines, shortestTimes[seed % 3]);
    const Instance shifts = randomInstance(seed, jobs, machines, seed % 3);
    const ShopCalendar calendar(settingsFrom(keys), machines);
    for (const DispatchRule& rule : dispatchRules()) {
      SCOPED_TRACE(always.name + " by " + rule.name);
      EXPECT_EQ(findViolations(always, planned(always, rule.name), {}), std::vector<std::string>());
      const Schedule schedule = planned(shifts, rule.name, calendar);
      EXPECT_EQ(findViolations(shifts, schedule, calendar), std::vector<std::string>());
      EXPECT_GE(schedule.makespan(), lowerBound(shifts, calendar));
    }
  }
}

TEST(Dispatching, RulesPickWhatTheirNamesSay) {
  // Three jobs meet at machine 0 at time 0; which goes first tells the rule.
  const Instance meeting = parseInstance("3 3\n0 4 1 1 2 1\n0 2 1 1 2 1\n0 3 1 9 2 9\n", "x.txt");
  const std::pair<const char*, std::size_t> cases[] = {
      {"SPT", 1}, {"LPT", 0}, {"MWKR", 2}, {"MOPNR", 0}, {"FIFO", 0}};
  for (const auto& [rule, first] : cases) {
    EXPECT_EQ(planned(meeting, rule).byMachine(3)[0].front().job, first) << rule;
  }
  // What takes no time does not push back what fits before it.
  const Instance instant = parseInstance("2 2\n1 4 0 0\n0 4 1 0\n", "x.txt");
  EXPECT_EQ(planned(instant, "SPT").makespan(), 4);
  // Two jobs wait for machine 1 while job 2 holds it; job 1 came first.
  const Instance waiting = parseInstance("3 3\n0 4 1 5 2 1\n2 2 1 5 0 1\n1 6 0 1 2 1\n", "x.txt");
  EXPECT_EQ(planned(waiting, "FIFO").byMachine(3)[1][1].job, 1u);
}

}  // namespace
