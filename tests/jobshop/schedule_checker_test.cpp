// What makes a schedule infeasible, and that it stops a pipeline.
#include "ScheduleChecker.h"

#include <libvarrow/statistics/StatisticsContainer.h>

#include "JobShopData.h"
#include "modules/CheckSchedule.h"
#include "shop_fixtures.h"
#include "support/support.h"

using namespace jobshop;

namespace {

TEST(ScheduleChecker, EachKindOfViolationNamesItsOperationsAndStopsThePipeline) {
  const Instance instance =
      parseInstance("5 2\n0 3 1 4\n1 2 0 5\n0 1 1 1\n1 20 0 1\n1 2 1 2\n", "x");
  const std::vector<ScheduledOperation> operations = {
      {0, 0, 0, 0, 3},   {0, 1, 1, 2, 6},   {1, 0, 1, -1, 2},  {1, 1, 0, 2, 7},
      {0, 0, 0, 8, 11},  {7, 0, 0, 8, 11},  {0, 2, 0, 8, 11},  {2, 0, 99, 9, 10},
      {2, 1, 0, 10, 11}, {3, 0, 1, 20, 40}, {4, 0, 1, 21, 23}, {4, 1, 1, 25, 27}};
  const std::string first = "operation 0 of job 0 (machine 0, 0 to 3)";
  const std::string early = "operation 0 of job 1 (machine 1, -1 to 2) ";
  const std::string covered = " overlaps operation 0 of job 3 (machine 1, 20 to 40)";
  const std::vector<std::string> expected = {
      early + "takes a time of 2",
      early + "starts before time 0",
      "operation 0 of job 0 (machine 0, 8 to 11) is there twice, the first is " + first,
      "operation 0 of job 7 (machine 0, 8 to 11) is not in the instance",
      "operation 2 of job 0 (machine 0, 8 to 11) is not in the instance",
      "operation 0 of job 2 (machine 99, 9 to 10) belongs on machine 0",
      "operation 1 of job 2 (machine 0, 10 to 11) belongs on machine 1",
      "operation 1 of job 0 (machine 1, 2 to 6) starts before the end of " + first,
      "operation 1 of job 3 is missing",
      "operation 1 of job 1 (machine 0, 2 to 7) overlaps " + first,
      "operation 1 of job 2 (machine 0, 10 to 11) overlaps operation 0 of job 0 (machine 0, 8 to "
      "11)",
      "operation 0 of job 4 (machine 1, 21 to 23)" + covered,
      "operation 1 of job 4 (machine 1, 25 to 27)" + covered};
  EXPECT_EQ(findViolations(instance, {operations, "hand"}), expected);

  libvarrow::StatisticsContainer statistics("run");
  JobShopData data;
  data.statisticsContainer = &statistics;
  data.setInstance(instance);
  data.setSchedule({operations, "hand"});
  EXPECT_EQ(test_support::errorOf([&] { CheckSchedule().processImp(&data); }),
            "the schedule is not feasible: " + expected.front() + " (13 in all)");
}

}  // namespace
