// What keeps and what breaks the user's rules, and what is reported of it.
#include <libvarrow/json/json.h>

#include <boost/filesystem/operations.hpp>

#include "JobShopData.h"
#include "modules/CheckRules.h"
#include "rules/registerRules.h"
#include "shop_fixtures.h"
#include "support/support.h"

using namespace jobshop;
using namespace jobshop_test;
using namespace test_support;

namespace {

// Job 0 runs from 0 to 6 on machine 0 and from 8 to 10 on machine 1, job 1 from 6 to 76 on machine
// 0. Machine 0 works from 0 to 4, 5 to 8 and from 72 on, machine 1 always.
struct SmallShop {
  libvarrow::StatisticsContainer statistics{"test"};
  JobShopData data;

  explicit SmallShop(RunSettings settings) : data(std::move(settings)) {
    data.statisticsContainer = &statistics;
    data.setInstance(parseInstance("2 2\n0 5 1 2\n0 6 1 0\n", "small.txt"));
    data.setCalendar({settingsFrom(R"(
        "start": "2024-03-01 06:00:00", "time_unit": "01:00:00", "machines": [{"machine": 0,
        "shifts": [{"from": "06:00:00", "to": "14:00:00", "days": ["mon", "fri"]}],
        "breaks": [{"from": "10:00:00", "to": "11:00:00"}]}])"),
                      2});
    data.setSchedule(
        {{{1, 0, 0, 6, 76}, {0, 1, 1, 8, 10}, {0, 0, 0, 0, 6}, {1, 1, 1, 76, 76}}, "hand"});
  }
};

class Rules : public InTemporaryDirectory {
 protected:
  static void SetUpTestSuite() {
    static const bool once = (registerRules(), true);
    static_cast<void>(once);
  }

  // What CheckRules, with more `keys`, says of the small shop's schedule; how it ends.
  std::string check(const std::string& rules, const std::string& keys = "") {
    writeFile("rules.json", rules);
    RunSettings settings;
    settings.inputFolder = directory.path();
    SmallShop shop(settings);
    const std::string end = errorOf([&] {
      CheckRules module;
      cppbind::JsonDecodeBinder().decode(json(R"({"file": "rules.json")" + keys + "}"), module);
      module.processImp(&shop.data);
    });
    verdict = shop.data.rulesVerdict();
    statistics = shop.statistics.toJsonValue4Bind()["test"];
    return end;
  }

  // The report's lines behind the first.
  static std::string complaints() {
    const std::string text = readFile("rule_report.txt");
    return text.substr(text.find('\n') + 1);
  }

  std::string verdict;
  Json::Value statistics;
};

TEST_F(Rules, KeepTheirLimitsToTheUnit) {
  const std::pair<std::string, std::string> cases[] = {
      {R"("LatestFinish": {"limit": 76})", ""},
      {R"("LatestFinish": {"limit": 75})", "LatestFinish  job 1 ends at 76, 1 after 75"},
      {R"("LatestFinish": {"limit": 10, "job": 0})", ""},
      {R"("MaxWait": {"limit": 2})", ""},
      {R"("MaxWait": {"limit": 1})",
       "MaxWait  job 0 waits 2 for machine 1 from 6 on, 1 more than 1"},
      {R"("MachineLoad": {"machine": 0, "at_most": 1})", ""},
      {R"("MachineLoad": {"machine": 1, "at_most": 0.026})",
       "MachineLoad  machine 1 is busy 2 of 76, 2.6 %, more than 2.6 %"},
      {R"("MaxInterruption": {"limit": 64})", ""},
      {R"("MaxInterruption": {"limit": 63})",
       "MaxInterruption  machine 0 interrupts operation 0 of job 1 from 8 to 72, for longer than "
       "63"},
      {R"("MaxInterruption": {"limit": 0, "machine": 1})", ""}};
  for (const auto& [rule, complaint] : cases) {
    const bool isKept = complaint.empty();
    const std::string end = check("{" + rule + "}");
    EXPECT_EQ(end == "no error", isKept) << rule << end;
    EXPECT_EQ(complaints(), isKept ? "" : "  " + complaint + "\n") << rule;
  }
}

TEST_F(Rules, AllLookOnOthersStopAndSomeAreOff) {
  EXPECT_NE(check(R"([{"LatestFinish": {"limit": 1}},
                      {"rule_list": [{"LatestFinish": {"limit": 2, "all": true},
                                      "rule_list": [{"MaxWait": {"limit": 9}}]}]},
                      {"LatestFinish": {"limit": 3, "all": true, "enabled": false}}])")
                .find("rules: 2 of 3 broken; LatestFinish: job 0 ends at 10, 9 after 1; more in /"),
            std::string::npos);
  EXPECT_EQ(complaints(),
            "  LatestFinish  job 0 ends at 10, 9 after 1\n"
            "  LatestFinish  job 0 ends at 10, 8 after 2\n"
            "  LatestFinish  job 1 ends at 76, 74 after 2\n");
  EXPECT_EQ(statistics[1]["rules_broken"], "2/3;66.6667%");
  const Json::Value& rules = statistics[2]["rules"];
  EXPECT_EQ(rules[1]["failed_count"], 2);
  EXPECT_EQ(rules[3]["failed_count"], 0);
}

TEST_F(Rules, ReportsAreWrittenWhetherTheRunGoesOnOrNot) {
  const std::string rules = R"({"LatestFinish": {"limit": 70}, "MachineLoad": {"at_most": 0.5}})";
  EXPECT_EQ(check(rules, R"(, "stop": false, "json": "deep/full.json", "json_v2": "")"),
            "no error");
  EXPECT_EQ(verdict, "2 of 2 broken");
  EXPECT_FALSE(boost::filesystem::exists("rule_report_v2.json"));
  EXPECT_EQ(libvarrow::File2Json("deep/full.json")["ruleValidatorReasonList"].size(), 2u);
  EXPECT_NE(check(rules), "no error");
  EXPECT_EQ(libvarrow::File2Json("rule_report_v2.json")["rulesBreak"].size(), 2u);
}

TEST_F(Rules, FaultsInARuleFileNameTheFileAndTheirPlace) {
  const std::string file = (directory.path() / "rules.json").string() + ": ";
  const std::pair<std::string, std::string> cases[] = {
      {R"({"MaxWait": {"limit": -1}})", file + "MaxWait.limit: expected a number from 0"},
      {R"({"LatestFinish": {"limit": 1, "job": 2}})",
       "LatestFinish: no job 2, the instance has 2, from 0"},
      {R"({"MachineLoad": {"at_most": 1, "machine": 2, "enabled": false}})",
       "MachineLoad: no machine 2, the instance has 2, from 0"},
      {"[]", "no error"}};
  for (const auto& [rules, fault] : cases) EXPECT_EQ(check(rules), fault);
  EXPECT_EQ(verdict, "all 0 kept");
}

}  // namespace
