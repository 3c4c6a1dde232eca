// Working time: the times of operations, and the errors in its keys.
#include "shop_fixtures.h"

namespace jobshop_test {
namespace {

using Spans = std::vector<std::pair<Time, Time>>;

TEST(Calendar, OperationsRunInTheWorkingTimeOfTheirMachine) {
  struct Case {
    std::string keys, instance;
    Spans expected;
  };
  const Case cases[] = {
      {kEarlyShift, "2 1\n0 5\n0 6", {{0, 6}, {6, 76}}},  // over break and weekend
      {kEarlyShift, "2 1\n0 4\n0 3", {{0, 4}, {5, 8}}},   // up to a gap, not into it
      {kFriday + R"("efficiency": 1.001)", "1 1\n0 1001", {{0, 1000}}},
      // A time unit that is only partly working time does not count.
      {kFriday + R"("shifts": [{"from": "06:30:00", "to": "10:30:00"}])", "1 1\n0 4", {{1, 26}}},
      // The shift of the previous day ends after midnight; it repeats every week.
      {R"("start": "2024-03-02 00:00:00", "time_unit": "01:00:00",
          "shifts": [{"from": "22:00:00", "to": "30:00:00", "days": ["fri"]}])",
       "1 1\n0 7",
       {{0, 167}}},
      // A machine's shifts replace the shop's; its closed hours are added.
      {kEarlyShift + R"(, "closed": [{"timeBegin": "2024-03-01 06:00:00",
                                      "timeEnd": "2024-03-01 08:00:00"}],
          "machines": [{"machine": 0, "shifts": [], "closed": [
            {"timeBegin": "2024-03-01 12:00:00", "timeEnd": "2024-03-01 13:00:00"}]}])",
       "1 1\n0 10",
       {{2, 14}}},
      // An operation that takes no time may end with a shift.
      {kEarlyShift, "1 2\n0 7 1 0", {{0, 8}, {8, 8}}}};
  for (const Case& c : cases) {
    const Instance instance = instanceFrom(c.instance);
    const ShopCalendar calendar = calendarFrom(c.keys, instance.machineCount);
    Spans spans;
    for (const auto& operation : planned(instance, "FIFO", calendar).operations) {
      spans.emplace_back(operation.start, operation.end);
    }
    EXPECT_EQ(c.expected, spans) << c.keys;
  }
}

TEST(Calendar, ErrorsNameTheKeyOrTheMachine) {
  const std::pair<std::string, std::string> cases[] = {
      {R"("start": "+infinity")", "start: must be a date and a time"},
      {R"("start": "2024-03-01", "time_unit": "+infinity")",
       "time_unit: \"+infinity\" is more than \"24:00:00\""},
      {R"("start": "9999-12-01 00:00:00")", "days: expected an end before the year 10000"},
      {kFriday + R"("machines": [{"machine": 0}, {"machine": 2}])",
       "machines[1].machine: unknown machine 2; the instance has 0 to 1"},
      {kFriday + R"("shifts": [{"from": "24:00:00", "to": "25:00:00"}])",
       "shifts[0].from: \"24:00:00\" is more than \"23:59:59\""},
      {kFriday + R"("shifts": [{"from": "06:00:00", "to": "+infinity"}])",
       "shifts[0].to: expected a time after \"from\", 06:00:00, by at most 24 hours; "},
      {kFriday + R"("shifts": [{"from": "06:00:00", "to": "07:00:00", "days": ["Mon"]}])",
       "shifts[0].days[0]: \"Mon\" is not one of \"mon\", \"tue\", "},
      {kFriday + R"("machines": [{"machine": 0, "closed": [
          {"timeBegin": "2024-03-02 00:00:00", "timeEnd": "+infinity"}]}])",
       "machines[0].closed: expected \"timeEnd\" after \"timeBegin\", found "},
      {kEarlyShift + R"(, "days": 1)",
       "machine 0 has less than 8 time units of working time from time 1 on: its calendar ends "
       "at 2024-03-02 06:00:00, after 1 \"days\""},
      {kFriday + R"("days": 3, "machines": [{"machine": 1,
          "shifts": [{"from": "06:00:00", "to": "14:00:00", "days": ["tue"]}]}])",
       "machine 1 never works from 2024-03-01 06:00:00 to 2024-03-04 06:00:00"}};
  for (const auto& [keys, fault] : cases) {
    const std::string error =
        errorOf([&, k = keys] { lowerBound(instanceFrom("1 2\n1 1 0 8\n"), calendarFrom(k)); });
    EXPECT_EQ(0u, error.find(fault)) << keys << '\n' << error;
  }
}

}  // namespace
}  // namespace jobshop_test
