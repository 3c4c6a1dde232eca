// The schedules that the dispatching rules build.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "DispatchRules.h"
#include "LowerBound.h"
#include "ScheduleChecker.h"
#include "shop_fixtures.h"

using namespace jobshop;
using namespace jobshop_test;

namespace {

// Whether `wanted` fits into a gap of its machine before its start, once its job is there.
bool couldStartEarlier(const Instance& instance, const Schedule& schedule,
                       const ShopCalendar& calendar, const ScheduledOperation& wanted) {
  Time from = 0;
  for (const ScheduledOperation& other : schedule.operations) {
    if (other.job == wanted.job && other.position + 1 == wanted.position) from = other.end;
  }
  const Time time =
      calendar.of(wanted.machine).timeFor(instance.jobs[wanted.job][wanted.position].duration);
  const auto machines = schedule.byMachine(instance.machineCount);
  for (const ScheduledOperation& other : machines[wanted.machine]) {
    if (other.start >= wanted.start) break;
    if (calendar.run(wanted.machine, from, time).end <= other.start) return true;
    from = std::max(from, other.end);
  }
  return calendar.run(wanted.machine, from, time).start < wanted.start;
}

// That the checker sees it when an operation is moved or does more or less than it should.
void expectChangesSeen(const Instance& instance, const Schedule& schedule,
                       const ShopCalendar& calendar, ScheduledOperation& operation) {
  for (const auto& [start, end] : {std::pair(-1, -1), std::pair(0, -1), std::pair(0, 1)}) {
    operation.start += start;
    operation.end += end;
    EXPECT_FALSE(findViolations(instance, schedule, calendar).empty()) << start << ' ' << end;
    operation.start -= start;
    operation.end -= end;
  }
}

void expectFeasibleAndActive(const Instance& instance, const ShopCalendar& calendar,
                             bool hasInstantOperations) {
  for (const DispatchRule& rule : dispatchRules()) {
    SCOPED_TRACE(instance.name + " by " + rule.name);
    Schedule schedule = planned(instance, rule.name, calendar);
    EXPECT_EQ(findViolations(instance, schedule, calendar), std::vector<std::string>());
    EXPECT_GE(schedule.makespan(), lowerBound(instance, calendar));
    if (hasInstantOperations) continue;  // what takes no time fits in many places
    for (ScheduledOperation& operation : schedule.operations) {
      EXPECT_FALSE(couldStartEarlier(instance, schedule, calendar, operation)) << operation.start;
      expectChangesSeen(instance, schedule, calendar, operation);
    }
  }
}

TEST(Dispatching, EveryRuleGivesAFeasibleActiveScheduleInWorkingTime) {
  const Time shortestTimes[] = {0, 1, kMaxDuration - 8};
  for (std::uint32_t seed = 0; seed < 60; ++seed) {
    const Time shortest = shortestTimes[seed % 3];
    const Instance always = randomInstance(seed, 1 + seed % 11, 1 + seed % 7, shortest);
    expectFeasibleAndActive(always, {}, shortest == 0);
    const Instance instance = randomInstance(seed, 1 + seed % 9, 1 + seed % 5, seed % 3);
    const ShopCalendar calendar(randomCalendar(seed, instance.machineCount), instance.machineCount);
    expectFeasibleAndActive(instance, calendar, seed % 3 == 0);
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
