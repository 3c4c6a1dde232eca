// Schedules: the faults that make them infeasible, and their files.
#include "JobShopData.h"
#include "modules/CheckSchedule.h"
#include "schedule/EarlierStarts.h"
#include "schedule/ScheduleText.h"
#include "shop_fixtures.h"

namespace jobshop_test {
namespace {

TEST(ScheduleChecker, EachKindOfViolationNamesItsOperations) {
  const Instance instance =
      parseInstance("5 2\n0 3 1 4\n1 2 0 5\n0 1 1 1\n1 20 0 1\n1 2 1 2\n", "x");
  const std::vector<ScheduledOperation> operations = {
      {0, 0, 0, 0, 3},   {0, 1, 1, 2, 6},   {1, 0, 1, -1, 2},  {1, 1, 0, 2, 7},
      {0, 0, 0, 8, 11},  {7, 0, 0, 8, 11},  {2, 0, 99, 9, 10}, {2, 1, 1, 10, 11},
      {3, 0, 1, 20, 40}, {4, 0, 1, 21, 23}, {4, 1, 1, 25, 27}};
  const std::string first = "operation 0 of job 0 (machine 0, 0 to 3)";
  const std::string early = "operation 0 of job 1 (machine 1, -1 to 2) ";
  const std::string covered = " overlaps operation 0 of job 3 (machine 1, 20 to 40)";
  const std::vector<std::string> expected = {
      early + "takes a time of 2",
      early + "starts before time 0",
      "operation 0 of job 0 (machine 0, 8 to 11) is a duplicate of " + first,
      "operation 0 of job 7 (machine 0, 8 to 11) is not in the instance",
      "operation 0 of job 2 (machine 99, 9 to 10) belongs on machine 0",
      "operation 1 of job 0 (machine 1, 2 to 6) starts before the end of " + first,
      "operation 1 of job 3 is missing",
      "operation 1 of job 1 (machine 0, 2 to 7) overlaps " + first,
      "operation 0 of job 4 (machine 1, 21 to 23)" + covered,
      "operation 1 of job 4 (machine 1, 25 to 27)" + covered};
  EXPECT_EQ(expected, findViolations(instance, {operations, "hand"}));

  libvarrow::StatisticsContainer statistics("run");
  JobShopData data;
  data.statisticsContainer = &statistics;
  data.setInstance(instance);
  data.setSchedule({operations, "hand"});
  EXPECT_EQ("the schedule is not feasible: " + expected.front() + " (10 in all)",
            errorOf([&] { CheckSchedule().processImp(&data); }));
}

TEST(ScheduleChecker, OperationsHaveToKeepToWorkingTime) {
  const Instance instance = instanceFrom("1 1\n0 3\n");
  const ShopCalendar calendar = calendarFrom(kEarlyShift + R"(, "days": 5)", 1);
  const std::tuple<Time, Time, std::string> cases[] = {
      {7, 74, ""},
      {2, 5, " ends outside working time has a working time of 2, but takes 3"},
      {4, 8, " starts outside working time"},
      {1'000'000'000'000, 1'000'000'000'003, " ends after its machine's calendar"}};
  for (const auto& [start, end, expected] : cases) {
    std::string text;
    for (const auto& violation :
         findViolations(instance, {{{0, 0, 0, start, end}}, ""}, calendar)) {
      text += violation.substr(violation.find(") ") + 1);
    }
    EXPECT_EQ(expected, text) << start;
  }
}

TEST(EarlierStarts, EachObstacleIsRecordedWithItsAmount) {
  const Instance instance = instanceFrom("4 2\n0 3 1 2\n1 4 0 2\n0 1 1 1\n0 3 1 1\n");
  const Schedule schedule = {{{0, 0, 0, 0, 3},
                              {1, 0, 1, 0, 4},
                              {0, 1, 1, 5, 7},
                              {1, 1, 0, 5, 7},
                              {2, 0, 0, 7, 8},
                              {3, 0, 0, 72, 75}},
                             "hand"};
  libvarrow::RejectionStatistics rejections;
  recordEarlierStarts(instance, schedule, calendarFrom(kEarlyShift), rejections);
  std::string text;
  const Json::Value subjects = rejections.toJsonValue4Bind()["__rejections__"]["subjects"];
  for (const std::string& job : subjects.getMemberNames()) {
    const Json::Value& reasons = subjects[job]["reasons"];
    EXPECT_TRUE(subjects[job]["placed"].asBool());
    for (const std::string& reason : reasons.getMemberNames()) {
      const Json::Value& each = reasons[reason];
      text += job + ": " + each["count"].asString() + " x " + reason + ", " +
              each["nearest"].asString() + each["example"].asString() + ", " +
              each["short_by"].asString() + '\n';
    }
  }
  EXPECT_EQ(
      "job 0: 1 x machine 1 is busy, operation 1 at 2024-03-01 09:00:00, 01:00:00\n"
      "job 0: 1 x machine 1 is not working, operation 1 at 2024-03-01 10:00:00, 01:00:00\n"
      "job 1: 1 x machine 0 is not working, operation 1 at 2024-03-01 10:00:00, 01:00:00\n"
      "job 1: 1 x operation before not done, operation 1 at 2024-03-01 09:00:00, 01:00:00\n"
      "job 2: 1 x gap not used, operation 0 at 2024-03-01 09:00:00, \n"
      "job 2: 1 x machine 0 is busy, operation 0 at 2024-03-01 06:00:00, 07:00:00\n"
      "job 3: 1 x gap of machine 0 too short, operation 0 at 2024-03-01 09:00:00, 02:00:00\n"
      "job 3: 1 x machine 0 is busy, operation 0 at 2024-03-01 06:00:00, 08:00:00\n"
      "job 3: 1 x machine 0 is not working, operation 0 at 2024-03-01 14:00:00, 64:00:00\n",
      text);
}

TEST(ScheduleText, JsonIsByJobAndCsvByStartWithClockTimesIfSet) {
  const Instance instance = instanceFrom("2 2\n0 5 1 1\n0 2 1 1\n");
  const Schedule schedule = {{{0, 1, 1, 72, 73}, {1, 0, 0, 0, 2}, {0, 0, 0, 2, 8}}, "hand"};
  const ShopCalendar calendar = calendarFrom(kEarlyShift);
  // Parsed again, because signed and unsigned numbers have the same text.
  EXPECT_EQ(json(R"({
      "instance": "x", "makespan": 73, "lower_bound": 9, "origin": "hand", "jobs": [
        [{"machine": 0, "start": 2, "end": 8, "work": 5, "interruptions": [{"start": 4, "end": 5}]},
         {"machine": 1, "start": 72, "end": 73, "work": 1}],
        [{"machine": 0, "start": 0, "end": 2, "work": 2}]]})"),
            json(scheduleJson(instance, schedule, calendar, {}).toStyledString()));
  const Json::Value last = scheduleJson(instance, schedule, {}, calendar.clock())["jobs"][0][1];
  EXPECT_EQ("2024-03-04 07:00:00", last["end_clock"].asString());
  EXPECT_EQ("job,operation,machine,start,end\n1,0,0,0,2\n0,0,0,2,8\n0,1,1,72,73\n",
            scheduleCsv(schedule, {}, {}));
  EXPECT_THROW(calendar.clock().at(1'000'000'000'000'000), std::runtime_error);
}

}  // namespace
}  // namespace jobshop_test
