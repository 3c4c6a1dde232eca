// Working time: where operations run in it, what the checker sees, what is written and refused.

#include "JobShopData.h"
#include "LowerBound.h"
#include "ScheduleChecker.h"
#include "ScheduleText.h"
#include "shop_fixtures.h"
#include "support/support.h"

using namespace jobshop;
using namespace jobshop_test;
using namespace test_support;

namespace {

// A Friday, in hours.
const std::string kFriday = R"("start": "2024-03-01 06:00:00", "time_unit": "01:00:00", )";
// From 0 to 4 and 5 to 8, and again on Monday from 72 on.
const std::string kEarlyShift = kFriday + R"(
    "shifts": [{"from": "06:00:00", "to": "14:00:00", "days": ["mon", "tue", "wed", "thu", "fri"]}],
    "breaks": [{"from": "10:00:00", "to": "11:00:00"}])";

using Spans = std::vector<std::pair<Time, Time>>;

ShopCalendar calendarFrom(const std::string& keys, std::size_t machineCount) {
  return {settingsFrom(keys), machineCount};
}

// Where jobs of these durations run one after the other on the only machine.
Spans runInTurn(const std::string& keys, const std::vector<Time>& durations) {
  Instance instance = {"hand", 1, {}};
  for (const Time duration : durations) instance.jobs.push_back({{0, duration}});
  Spans spans;
  for (const auto& operation : planned(instance, "FIFO", calendarFrom(keys, 1)).operations) {
    spans.emplace_back(operation.start, operation.end);
  }
  return spans;
}

TEST(Calendar, OperationsRunInWorkingTimeAndItsGapsInterruptThem) {
  struct Case {
    std::string keys;
    std::vector<Time> durations;
    Spans expected;
  };
  const Case cases[] = {
      {kEarlyShift, {5, 6}, {{0, 6}, {6, 76}}},              // over the break, over the weekend
      {kEarlyShift, {4, 3, 1}, {{0, 4}, {5, 8}, {72, 73}}},  // up to a gap, not into it
      {kFriday + R"("efficiency": 0.8)", {4, 5, 1}, {{0, 5}, {5, 12}, {12, 14}}},
      {kFriday + R"("efficiency": 1.001)", {1001}, {{0, 1000}}},
      {kFriday + R"("efficiency": 2)", {5, 4}, {{0, 3}, {3, 5}}},
      // Units that are cut in two are not worked.
      {kFriday + R"("breaks": [{"from": "12:00:00", "to": "12:15:00"}])", {7}, {{0, 8}}},
      {kFriday + R"("shifts": [{"from": "06:30:00", "to": "10:30:00"}])", {4}, {{1, 26}}},
      // The shift of the day before runs past midnight; its week comes again.
      {R"("start": "2024-03-02 00:00:00", "time_unit": "01:00:00",
          "shifts": [{"from": "22:00:00", "to": "30:00:00", "days": ["fri"]}])",
       {7},
       {{0, 167}}},
      {kFriday + R"("closed": [
          {"timeBegin": "2024-03-01 08:00:00", "timeEnd": "2024-03-01 10:00:00"},
          {"timeBegin": "2024-03-01 07:00:00", "timeEnd": "2024-03-01 09:00:00"}])",
       {2},
       {{0, 5}}},
      // A machine's own shifts take the shop's place; its closed hours come on top.
      {kEarlyShift + R"(, "closed": [{"timeBegin": "2024-03-01 06:00:00",
                                      "timeEnd": "2024-03-01 08:00:00"}],
          "machines": [{"machine": 0, "shifts": [], "closed": [
            {"timeBegin": "2024-03-01 12:00:00", "timeEnd": "2024-03-01 13:00:00"}]}])",
       {10},
       {{2, 14}}}};
  for (const Case& c : cases) EXPECT_EQ(runInTurn(c.keys, c.durations), c.expected) << c.keys;
}

TEST(Calendar, OnlyTheMachineOfAnOperationCountsAndWhatTakesNoTimeEndsWithAShift) {
  const std::string keys = kEarlyShift + R"(, "machines": [{"machine": 1, "breaks": []}])";
  const auto last = [&](const char* text) {
    const Instance instance = parseInstance(text, "x.txt");
    const ScheduledOperation operation =
        planned(instance, "SPT", calendarFrom(keys, 2)).operations.back();
    return std::make_pair(operation.start, operation.end);
  };
  EXPECT_EQ(last("1 2\n1 4 0 2\n"), std::make_pair(Time{5}, Time{7}));
  EXPECT_EQ(last("1 2\n1 8 0 0\n"), std::make_pair(Time{8}, Time{8}));
  EXPECT_EQ(last("1 2\n1 9 0 0\n"), std::make_pair(Time{73}, Time{73}));
}

TEST(Calendar, TheBoundSeesTimeOffAndPace) {
  const Instance instance = parseInstance("2 2\n0 4 1 1\n0 4 1 1\n", "x.txt");
  EXPECT_EQ(lowerBound(instance, calendarFrom(kEarlyShift, 2)), 74);
  EXPECT_EQ(lowerBound(instance, calendarFrom(kFriday + R"("efficiency": 4)", 2)), 3);
}

TEST(Calendar, TheCheckerSeesWhatDoesNotKeepToIt) {
  const Instance instance = parseInstance("1 1\n0 3\n", "x.txt");
  const ShopCalendar calendar = calendarFrom(kEarlyShift + R"(, "days": 5)", 1);
  const std::tuple<Time, Time, std::string> cases[] = {
      {7, 74, ""},
      {2, 5, " ends outside working time has a working time of 2, but takes 3"},
      {4, 8, " starts outside working time"},
      {2, 7, " has a working time of 4, but takes 3"},
      {118, 121, " ends after its machine's calendar"},
      {1'000'000'000'000, 1'000'000'000'003, " ends after its machine's calendar"},
      {3, 2, " takes a time of 3"}};
  for (const auto& [start, end, expected] : cases) {
    std::string text;
    for (const auto& violation :
         findViolations(instance, {{{0, 0, 0, start, end}}, ""}, calendar)) {
      text += violation.substr(violation.find(") ") + 1);
    }
    EXPECT_EQ(text, expected) << start;
  }
}

TEST(Calendar, WhatDoesNotFitIsNamedWithMachineAndDate) {
  JobShopData shop;
  shop.setInstance(parseInstance("1 2\n1 1 0 8\n", "x.txt"));
  const auto set = [&](const std::string& keys) {
    return errorOf([&] { shop.setCalendar(calendarFrom(keys, 2)); });
  };
  EXPECT_EQ(
      set(kEarlyShift + R"(, "days": 1)"),
      "machine 0 has less than 8 time units of working time from time 1 on: its calendar ends "
      "at 2024-03-02 06:00:00, after 1 \"days\"");
  EXPECT_EQ(set(kEarlyShift + R"(, "days": 4)"), "no error");
  EXPECT_EQ(set(kFriday + R"("days": 3, "machines": [{"machine": 1,
                "shifts": [{"from": "06:00:00", "to": "14:00:00", "days": ["tue"]}]}])"),
            "machine 1 never works from 2024-03-01 06:00:00 to 2024-03-04 06:00:00");
  // Exactly as much as there is fits.
  EXPECT_EQ(runInTurn(kEarlyShift + R"(, "days": 1)", {7}), (Spans{{0, 8}}));
}

TEST(Calendar, FaultsInKeysNameTheirPlace) {
  const auto shift = [](const std::string& window) {
    return kFriday + R"("shifts": [{"from": "06:00:00", "to": "14:00:00"}, {)" + window + "}]";
  };
  const std::pair<std::string, std::string> cases[] = {
      {R"("start": "2024-03-01", "time_unit": "00:00:00")",
       "time_unit: expected at least 00:00:01"},
      {kFriday + R"("days": 0)", "days: expected a number from 1 to 36600"},
      {R"("start": "9999-12-01 00:00:00")", "days: expected an end before the year 10000"},
      {kFriday + R"("machines": [{"machine": 0, "efficiency": 1e9}])",
       "machines[0].efficiency: expected a number from 0.001 to 1000"},
      {kFriday + R"("machines": [{"machine": 2}, {"machine": 2}])",
       "machines[1].machine: machine 2 has hours already"},
      {shift(R"("from": "24:00:00", "to": "25:00:00")"),
       "shifts[1].from: expected a time of day from 00:00:00 to 23:59:59"},
      {shift(R"("from": "06:00:00", "to": "06:00:00")"),
       "shifts[1].to: expected a time after \"from\", 06:00:00, by at most 24 hours; "},
      {shift(R"("from": "06:00:00", "to": "07:00:00", "days": [])"),
       "shifts[1].days: expected at least one day"},
      {kFriday + R"("machines": [{"machine": 0, "closed": [
          {"timeBegin": "2024-03-02 00:00:00", "timeEnd": "+infinity"}]}])",
       "machines[0].closed: expected \"timeEnd\" after \"timeBegin\", found "}};
  for (const auto& [keys, fault] : cases) {
    const std::string error = errorOf([&, k = keys] { settingsFrom(k); });
    EXPECT_EQ(error.find(fault), 0u) << keys << '\n' << error;
  }
}

TEST(Calendar, InterruptionsAreWritten) {
  const Instance instance = parseInstance("2 1\n0 5\n0 6\n", "x.txt");
  const ShopCalendar calendar = calendarFrom(kEarlyShift, 1);
  const Schedule schedule = planned(instance, "FIFO", calendar);
  const Json::Value jobs = scheduleJson(instance, schedule, calendar, {})["jobs"];
  EXPECT_EQ(test_support::json(jobs.toStyledString()), test_support::json(R"([
      [{"machine": 0, "start": 0, "end": 6, "work": 5, "interruptions": [{"start": 4, "end": 5}]}],
      [{"machine": 0, "start": 6, "end": 76, "work": 6,
        "interruptions": [{"start": 8, "end": 72}]}]])"));
}

}  // namespace
