#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "ActiveScheduler.h"
#include "DispatchRules.h"
#include "ScheduleChecker.h"
#include "shop_fixtures.h"

using jobshop::Instance;
using jobshop::Schedule;
using jobshop::ScheduledOperation;
using jobshop::Time;
using jobshop_test::planned;
using jobshop_test::randomInstance;
using jobshop_test::shipped;

namespace {

// Whether `wanted` fits into a gap of its machine before its start, once its job is there.
bool couldStartEarlier(const Instance& instance, const Schedule& schedule,
                       const ScheduledOperation& wanted) {
  Time from = 0;
  for (const ScheduledOperation& other : schedule.operations) {
    if (other.job == wanted.job && other.position + 1 == wanted.position) from = other.end;
  }
  const auto machines = schedule.byMachine(instance.machineCount);
  for (const ScheduledOperation& other : machines[wanted.machine]) {
    if (other.start >= wanted.start) break;
    if (other.start - from >= wanted.end - wanted.start) return true;
    from = std::max(from, other.end);
  }
  return from < wanted.start;
}

TEST(Dispatching, EveryRuleGivesAFeasibleActiveSchedule) {
  std::vector<Instance> instances = {shipped("ft06"), shipped("la01")};
  for (std::uint32_t seed = 0; seed < 20; ++seed) {
    instances.push_back(randomInstance(seed, 1 + seed % 12, 1 + seed % 7, 1, seed % 2 == 0));
  }
  for (const Instance& instance : instances) {
    for (const jobshop::DispatchRule& rule : jobshop::dispatchRules()) {
      SCOPED_TRACE(instance.name + " by " + rule.name);
      const Schedule schedule = planned(instance, rule.name);
      EXPECT_EQ(jobshop::findViolations(instance, schedule), std::vector<std::string>());
      EXPECT_GE(schedule.makespan(), instance.lowerBound());
      for (const ScheduledOperation& operation : schedule.operations) {
        EXPECT_FALSE(couldStartEarlier(instance, schedule, operation))
            << "job " << operation.job << ", operation " << operation.position;
      }
    }
  }
}

TEST(Dispatching, OperationsWithoutATimeAndSumsOfTheLongestTimesAreFeasible) {
  for (const Time shortest : {Time{0}, jobshop::kMaxDuration - 8}) {
    for (std::uint32_t seed = 0; seed < 20; ++seed) {
      Instance instance = randomInstance(seed, 6, 4, shortest, false);
      if (shortest == 0) instance.jobs[0][1].duration = 0;
      const Schedule schedule = planned(instance, "MWKR");
      EXPECT_EQ(jobshop::findViolations(instance, schedule), std::vector<std::string>());
    }
  }
}

// Three jobs meet at machine 0 at time 0; which goes first tells the rule.
TEST(Dispatching, RulesPickWhatTheirNamesSay) {
  const Instance instance =
      jobshop::parseInstance("3 3\n0 4 1 1 2 1\n0 2 1 1 2 1\n0 3 1 9 2 9\n", "x.txt");
  const struct {
    const char* rule;
    std::size_t first;
  } cases[] = {{"SPT", 1}, {"LPT", 0}, {"MWKR", 2}, {"MOPNR", 0}, {"FIFO", 0}};
  for (const auto& c : cases) {
    EXPECT_EQ(planned(instance, c.rule).byMachine(3)[0].front().job, c.first) << c.rule;
  }
}

TEST(Dispatching, FirstInFirstOutServesTheLongerWaiting) {
  // Both jobs wait for machine 1 while job 2 holds it; job 1 came first.
  const Instance instance =
      jobshop::parseInstance("3 3\n0 4 1 5 2 1\n2 2 1 5 0 1\n1 6 0 1 2 1\n", "x.txt");
  EXPECT_EQ(planned(instance, "FIFO").byMachine(3)[1][1].job, 1u);
}

TEST(Dispatching, AnUnknownRuleIsAnsweredWithThoseThereAre) {
  try {
    jobshop::findDispatchRule("EDD");
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(),
                 "no dispatching rule \"EDD\"; there are SPT, LPT, MWKR, MOPNR, FIFO");
  }
}

}  // namespace
