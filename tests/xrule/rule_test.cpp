// Rules, their results and the reasons for failing.
#include "libvarrow/xrule/Rule.h"

#include <boost/make_shared.hpp>

#include "libvarrow/xrule/RuleResult.h"
#include "libvarrow/xrule/ValidatorReason.h"
#include "support/support.h"
#include "xrule/checks.h"

namespace xrule_test {

using namespace libvarrow;
using namespace test_support;

TEST(RuleTest, CopiesHaveTheCountsAndFlags) {
  AtMost rule;
  rule.limit = 3;
  for (const int value : {1, 3, 4}) EXPECT_EQ(value < 4, rule.validate(value));
  rule.disable();
  rule.setRuleGenType(RuleGenType{7});
  rule.setValidateAllFlag(true);
  AtMost copy;
  EXPECT_TRUE(copy.isEnabled() && !copy.getValidateAllFlag());
  copy = AtMost(rule);
  rule.resetStatisticsCount();
  EXPECT_EQ(0, rule.getRuleBasicInfo(nullptr)["failed_count"].asInt());
  std::string text;
  copy.getRuleBasicInfo(&text);
  EXPECT_EQ(
      "{\n\t\"failed_count\" : 1,\n\t\"passed_count\" : 2,\n"
      "\t\"rule_class\" : \"xrule_test::AtMost\"\n}\n",
      text);
  EXPECT_TRUE(!copy.isEnabled() && copy.getValidateAllFlag());
  EXPECT_EQ(RuleGenType{7}, copy.getRuleGenType());
}

TEST(RuleTest, AResultHasAFlagAndAReason) {
  RuleParameter parameter;
  RuleValidatorReason why("machine 3");
  RuleValidateContext context(&parameter, &why);
  context.getResult().setFlag(RuleResult::FLAG_FAILED_OVER_FLOW);
  EXPECT_EQ(
      "parameter: libvarrow::RuleParameter; result: flag: FAIL; failed_reason: "
      "{\n\t\"refObjList\" : [ \"machine 3\" ],\n\t\"ruleReasonList\" : []\n}\n",
      context.dumpStr());
  EXPECT_EQ("parameter: null; result: flag: PASS", RuleValidateContext(nullptr, nullptr).dumpStr());
}

boost::shared_ptr<RuleReason> reasonOf(const Rule& rule, const char* detail) {
  auto info = std::make_unique<Json::Value>(json(detail));
  auto reason = boost::make_shared<RuleReason>(&rule, info);
  EXPECT_EQ(nullptr, info);
  return reason;
}

class ReasonTest : public testing::Test {
 protected:
  cppbind::ClassRegister reg = checks();
  std::unique_ptr<Rule> rule{reg.create<Rule>("atmost", json(R"({"limit": 5})"))};
  // The members of every reason that describe the rule.
  const std::string ofRule = R"("ruleName": "atmost",
    "ruleClassName": "cppbind::ObjWrapperT<xrule_test::AtMost>",
    "ruleProperty": {"baseProperty": "a property", "originParameter": {"limit": 5}})";
};

TEST_F(ReasonTest, TheFullFormIsATreeByValidator) {
  const auto validator = boost::make_shared<RuleValidatorReason>("job 1", "machine 2");
  validator->addRefObj("day 3");
  validator->appendReason(reasonOf(*rule, R"({"reasonStr": "too many"})"));
  std::unique_ptr<Json::Value> none;
  validator->appendReason(new RuleReason(rule.get(), none));
  ValidatorReason report("plan");
  report.addReason({{"load", validator}, {"nothing", nullptr}});
  EXPECT_EQ(json(R"({"refObj": "plan", "ruleValidatorReasonList": [
      {"ruleValidatorName": "load", "ruleValidatorReason": {
        "refObjList": ["job 1", "machine 2", "day 3"], "ruleReasonList": [
          {)" + ofRule +
                 R"(, "detailInfo": {"reasonStr": "too many"}}, {)" + ofRule + R"(}]}},
      {"ruleValidatorName": "nothing"}]})"),
            report.getJsonValueInfo());
}

TEST_F(ReasonTest, TheSecondAndTheSimpleFormAreFlat) {
  const auto first = boost::make_shared<RuleValidatorReason>("job 1");
  first->appendReason(reasonOf(*rule, R"({"reasonStr": "too many"})"));
  first->appendReason(reasonOf(*rule, R"({"reasonStr": 3})"));
  const auto second = boost::make_shared<RuleValidatorReason>();
  second->appendReason(reasonOf(*rule, "[1]"));
  ValidatorReason report("plan");
  EXPECT_EQ(json(R"({"refObj": "plan"})"), report.getJsonValueInfoV2());
  report.addReason("x", first);
  report.addReason("y", second);
  report.addReason("z", nullptr);
  expectAbort("Expression 'px != 0' is false", [&] { report.getJsonValueInfoV2(); });
  second->appendReason(boost::shared_ptr<RuleReason>());
  EXPECT_EQ(second->reasons()[0], report.getFailedReasons()[2]);
  const auto simple = report.toSimple();
  std::string text;
  for (const auto& [name, reason] : simple->breakRules()) text += name + reason + ";";
  EXPECT_EQ("atmosttoo many;atmost;atmost;", text);
}

}  // namespace xrule_test
