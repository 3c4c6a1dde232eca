#include "ScheduleChecker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "shop_fixtures.h"

using jobshop::findViolations;
using jobshop::Instance;
using jobshop::Schedule;

namespace {

using Violations = std::vector<std::string>;

// Two jobs on two machines, planned without a gap: job 0 runs 0-3 and 3-7, job 1 runs 0-2 and 3-8.
const char* const kInstance = "2 2\n0 3 1 4\n1 2 0 5\n";
Schedule good() {
  return {{{0, 0, 0, 0, 3}, {0, 1, 1, 3, 7}, {1, 0, 1, 0, 2}, {1, 1, 0, 3, 8}}, "hand"};
}

TEST(ScheduleChecker, EachKindOfViolationNamesItsOperations) {
  const struct {
    std::function<void(Schedule&)> spoil;
    Violations expected;
  } cases[] = {
      {[](Schedule&) {}, {}},
      {[](Schedule& s) { s.operations.pop_back(); }, {"operation 1 of job 1 is missing"}},
      {[](Schedule& s) {
         s.operations.push_back({0, 0, 0, 8, 11});
       },
       {"operation 0 of job 0 (machine 0, 8 to 11) is there twice, the first is operation 0 of "
        "job 0 (machine 0, 0 to 3)"}},
      {[](Schedule& s) {
         s.operations.push_back({7, 0, 0, 8, 11});
       },
       {"operation 0 of job 7 (machine 0, 8 to 11) is not in the instance"}},
      {[](Schedule& s) {
         s.operations.push_back({0, 2, 0, 8, 11});
       },
       {"operation 2 of job 0 (machine 0, 8 to 11) is not in the instance"}},
      {[](Schedule& s) { s.operations[2].start = -1; },
       {"operation 0 of job 1 (machine 1, -1 to 2) takes a time of 2",
        "operation 0 of job 1 (machine 1, -1 to 2) starts before time 0"}},
      {[](Schedule& s) { s.operations[3].machine = 1; },
       {"operation 1 of job 1 (machine 1, 3 to 8) belongs on machine 0",
        "operation 1 of job 1 (machine 1, 3 to 8) overlaps operation 1 of job 0 (machine 1, 3 to "
        "7)"}},
      {[](Schedule& s) { s.operations[3].machine = 99; },
       {"operation 1 of job 1 (machine 99, 3 to 8) belongs on machine 0"}},
      {[](Schedule& s) {
         s.operations[1] = {0, 1, 1, 2, 6};
       },
       {"operation 1 of job 0 (machine 1, 2 to 6) starts before the end of operation 0 of job 0 "
        "(machine 0, 0 to 3)"}},
      {[](Schedule& s) {
         s.operations[3] = {1, 1, 0, 2, 7};
       },
       {"operation 1 of job 1 (machine 0, 2 to 7) overlaps operation 0 of job 0 (machine 0, 0 to "
        "3)"}},
  };
  const Instance instance = jobshop::parseInstance(kInstance, "x.txt");
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    Schedule schedule = good();
    cases[i].spoil(schedule);
    EXPECT_EQ(findViolations(instance, schedule), cases[i].expected) << "case " << i;
  }
}

TEST(ScheduleChecker, ALongOperationOverlapsAllThatItCovers) {
  const Instance instance = jobshop::parseInstance("4 1\n0 10\n0 2\n0 2\n0 0\n", "x.txt");
  const Schedule schedule = {
      {{0, 0, 0, 0, 10}, {1, 0, 0, 1, 3}, {2, 0, 0, 5, 7}, {3, 0, 0, 10, 10}}, "hand"};
  const Violations expected = {
      "operation 0 of job 1 (machine 0, 1 to 3) overlaps operation 0 of job 0 (machine 0, 0 to 10)",
      "operation 0 of job 2 (machine 0, 5 to 7) overlaps operation 0 of job 0 (machine 0, 0 to "
      "10)"};
  EXPECT_EQ(findViolations(instance, schedule), expected);
}

TEST(ScheduleChecker, NoOperationMayStartAUnitEarlier) {
  // In an active schedule that would break a rule; the checker has to see it wherever it is.
  const Instance instance = jobshop_test::shipped("ft06");
  const Schedule schedule = jobshop_test::planned(instance, "MWKR");
  for (std::size_t i = 0; i < schedule.operations.size(); ++i) {
    Schedule spoilt = schedule;
    --spoilt.operations[i].start;
    --spoilt.operations[i].end;
    EXPECT_FALSE(findViolations(instance, spoilt).empty()) << "operation " << i;
  }
}

}  // namespace
