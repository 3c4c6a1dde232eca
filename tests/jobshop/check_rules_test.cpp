// The rules of the user: their limits, their settings, and the reports.
#include "JobShopData.h"
#include "modules/CheckRules.h"
#include "shop_fixtures.h"

namespace jobshop_test {
namespace {

class Rules : public InTemporaryDirectory {
 protected:
  // Job 0 runs from 0 to 6 on machine 0 and from 8 to 10 on machine 1, job 1 from 6 to 76 on
  // machine 0. Machine 0 works from 0 to 4, 5 to 8 and from 72 on, machine 1 always.
  std::string check(const std::string& rules, const std::string& keys = "") {
    shopHost();
    writeFile("rules.json", rules);
    JobShopData shop;
    libvarrow::StatisticsContainer counted("test");
    shop.statisticsContainer = &counted;
    shop.setInstance(instanceFrom("2 2\n0 5 1 2\n0 6 1 0\n"));
    shop.setCalendar(calendarFrom(kEarlyShift +
                                  R"(, "machines": [{"machine": 1, "shifts": [], "breaks": []}])"));
    shop.setSchedule(
        {{{1, 0, 0, 6, 76}, {0, 1, 1, 8, 10}, {0, 0, 0, 0, 6}, {1, 1, 1, 76, 76}}, "hand"});
    return errorOf([&] {
      CheckRules module;
      cppbind::JsonDecodeBinder().decode(json(R"({"file": "rules.json")" + keys + "}"), module);
      module.processImp(&shop);
    });
  }

  // Returns the report without its first line.
  static std::string complaints() {
    const std::string text = readFile("rule_report.txt");
    return text.substr(text.find('\n') + 1);
  }
};

TEST_F(Rules, KeepTheirLimitsToTheUnit) {
  check(R"([{"LatestFinish": {"limit": 76}}, {"LatestFinish": {"limit": 9}},
            {"LatestFinish": {"limit": 10, "job": 0}},
            {"rule_list": [{"LatestFinish": {"limit": 2, "all": true}}]},
            {"LatestFinish": {"limit": 3, "all": true, "enabled": false}},
            {"MaxWait": {"limit": 2}}, {"MaxWait": {"limit": 1}},
            {"MachineLoad": {"machine": 0, "at_most": 1}},
            {"MachineLoad": {"machine": 1, "at_most": 0.026}},
            {"MaxInterruption": {"limit": 64}}, {"MaxInterruption": {"limit": 63}}])");
  EXPECT_EQ(
      "  LatestFinish     job 0 ends at 10, 1 after 9\n"
      "  LatestFinish     job 0 ends at 10, 8 after 2\n"
      "  MaxWait          job 0 waits 2 for machine 1 from 6 on, 1 more than 1\n"
      "  LatestFinish     job 1 ends at 76, 74 after 2\n"
      "  MaxInterruption  machine 0 interrupts operation 0 of job 1 from 8 to 72, for longer than "
      "63\n"
      "  MachineLoad      machine 1 is busy 2 of 76, 2.6 %, more than 2.6 %\n",
      complaints());
}

TEST_F(Rules, ReportsAreWrittenAlsoWhenTheRunStops) {
  const std::string rules = R"({"LatestFinish": {"limit": 70}, "MachineLoad": {"at_most": 0.5}})";
  EXPECT_EQ("no error", check(rules, R"(, "stop": false, "json": "deep/full.json")"));
  EXPECT_EQ(2u, libvarrow::File2Json("deep/full.json")["ruleValidatorReasonList"].size());
  EXPECT_EQ("rules: 2 of 2 broken", check(rules));
  EXPECT_EQ(2u, libvarrow::File2Json("rule_report_v2.json")["rulesBreak"].size());
}

TEST_F(Rules, FaultsInARuleFileNameTheFileAndTheirPlace) {
  EXPECT_EQ("rules.json: MaxWait.limit: -1 is less than 0", check(R"({"MaxWait": {"limit": -1}})"));
}

}  // namespace
}  // namespace jobshop_test
