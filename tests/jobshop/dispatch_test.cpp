// The schedules of the dispatching rules, and the lower bound of all schedules.
#include <random>

#include "schedule/EarlierStarts.h"
#include "shop_fixtures.h"

namespace jobshop_test {
namespace {

// A job may visit a machine several times, or never.
Instance randomInstance(std::uint32_t seed, std::size_t machines, Time shortest) {
  std::mt19937 random(seed);
  Instance instance = {"random" + std::to_string(seed), machines, {}};
  instance.jobs.assign(1 + seed % 11, std::vector<Operation>(machines));
  for (auto& job : instance.jobs) {
    for (Operation& operation : job) {
      operation = {random() % machines, shortest + static_cast<Time>(random() % 9)};
    }
  }
  return instance;
}

void expectFeasible(const Instance& instance, const ShopCalendar& calendar, bool isActive) {
  for (const DispatchRule& rule : dispatchRules()) {
    SCOPED_TRACE(instance.name + " by " + rule.name);
    const Schedule schedule = planned(instance, rule.name, calendar);
    EXPECT_EQ(std::vector<std::string>(), findViolations(instance, schedule, calendar));
    EXPECT_GE(schedule.makespan(), lowerBound(instance, calendar));
    libvarrow::RejectionStatistics rejections;
    recordEarlierStarts(instance, schedule, calendar, rejections);
    EXPECT_FALSE(isActive && contains(rejections.dumpAsJsonString(), "gap not used"));
  }
}

TEST(Dispatching, EveryRuleGivesAFeasibleScheduleInWorkingTime) {
  const Time shortestTimes[] = {0, 1, kMaxDuration - 8};
  // Overlapping breaks and closed hours that end within time units, and a shift past midnight.
  const std::string keys = R"("start": "2024-02-28 05:50:00", "time_unit": "00:07:00",
      "shifts": [{"from": "20:00:00", "to": "30:00:00"}, {"from": "04:00:00", "to": "09:30:00"}],
      "breaks": [{"from": "05:00:00", "to": "05:10:00", "days": ["thu", "fri"]}],
      "closed": [{"timeBegin": "2024-02-29 04:30:00", "timeEnd": "2024-02-29 05:05:00"}],
      "machines": [{"machine": 0, "efficiency": 0.7, "shifts": []}])";
  for (std::uint32_t seed = 0; seed < 60; ++seed) {
    const std::size_t machines = 1 + seed % 7;
    // Operations that take no time fit anywhere.
    const bool isActive = seed % 3 != 0;
    expectFeasible(randomInstance(seed, machines, shortestTimes[seed % 3]), {}, isActive);
    expectFeasible(randomInstance(seed, machines, seed % 3), calendarFrom(keys, machines),
                   isActive);
  }
}

TEST(Dispatching, EachRulePrefersTheJobsOfItsName) {
  // Three jobs wait for machine 0 at time 0; the first one identifies the rule.
  const Instance meeting = instanceFrom("3 3\n0 4 1 1 2 1\n0 2 1 1 2 1\n0 3 1 9 2 9\n");
  const std::pair<const char*, std::size_t> cases[] = {
      {"SPT", 1}, {"LPT", 0}, {"MWKR", 2}, {"MOPNR", 0}, {"FIFO", 0}};
  for (const auto& [rule, first] : cases) {
    EXPECT_EQ(first, planned(meeting, rule).byMachine(3)[0].front().job) << rule;
  }
}

TEST(Dispatching, TheLowerBoundIsThatOfTheBusiestMachine) {
  // Machine 1 works for 20, is reached after 2 at the soonest and left 3 before the end.
  EXPECT_EQ(25, lowerBound(instanceFrom("2 3\n0 2 1 10 2 3\n0 4 1 10 2 3\n"), {}));
  EXPECT_EQ(74, lowerBound(instanceFrom("2 2\n0 4 1 1\n0 4 1 1\n"), calendarFrom(kEarlyShift)));
}

}  // namespace
}  // namespace jobshop_test
