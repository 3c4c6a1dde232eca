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

TEST(RuleTest, CountsAndFlagsAreItsOwnAndCopied) {
  AtMost rule;
  EXPECT_TRUE(rule.isEnabled());
  EXPECT_FALSE(rule.getValidateAllFlag());
  rule.limit = 3;
  for (const int value : {1, 3, 4}) EXPECT_EQ(value < 4, rule.validate(value));
  rule.disable();
  rule.setRuleGenType(RuleGenType{7});
  AtMost copy;
  copy = AtMost(rule);
  rule.resetStatisticsCount();
  rule.enable();
  std::string text;
  EXPECT_EQ(json(R"({"failed_count": 0, "passed_count": 0, "rule_class": "xrule_test::AtMost"})"),
            rule.getRuleBasicInfo(nullptr));
  copy.getRuleBasicInfo(&text);
  EXPECT_EQ(
      "{\n\t\"failed_count\" : 1,\n\t\"passed_count\" : 2,\n"
      "\t\"rule_class\" : \"xrule_test::AtMost\"\n}\n",
      text);
  EXPECT_FALSE(copy.isEnabled());
  EXPECT_EQ(RuleGenType{7}, copy.getRuleGenType());
  EXPECT_EQ("xrule_test::AtMost", rule.dumpStr());
  Never all;
  all.setBind(nullptr, true);
  EXPECT_TRUE(Never(all).getValidateAllFlag());
}

struct Reason : FailReason {
  Json::Value getJsonValueInfo() const override { return json(R"({"why": "late"})"); }
};

TEST(RuleTest, AResultTellsItsFlagAndItsReason) {
  RuleResult result;
  EXPECT_EQ("flag: PASS", result.dumpStr());
  result.setFlag(RuleResult::FLAG_FAILED_OVER_FLOW);
  EXPECT_FALSE(result.isGood());
  EXPECT_EQ("flag: FAIL", result.dumpStr());
  Reason reason;
  result.setReason(&reason);
  EXPECT_EQ("flag: FAIL; failed_reason: {\n\t\"why\" : \"late\"\n}\n", result.dumpStr());

  RuleParameter parameter;
  RuleValidatorReason why("machine 3");
  RuleValidateContext context(&parameter, &why);
  EXPECT_TRUE(context.getResult().isGood());
  EXPECT_EQ(&why, context.getResult().getReason());
  EXPECT_EQ("parameter: libvarrow::RuleParameter; result: flag: PASS; failed_reason: " +
                why.dumpJsonValueInfo(),
            context.dumpStr());
  EXPECT_EQ("parameter: null; result: flag: PASS", RuleValidateContext(nullptr, nullptr).dumpStr());
}

boost::shared_ptr<RuleReason> reasonOf(const Rule& rule, const char* detail) {
  auto info = detail == nullptr ? nullptr : std::make_unique<Json::Value>(json(detail));
  auto reason = boost::make_shared<RuleReason>(&rule, info);
  EXPECT_EQ(nullptr, info);
  return reason;
}

class ReasonTest : public testing::Test {
 protected:
  cppbind::ClassRegister reg = checks();
  std::unique_ptr<Rule> rule{reg.create<Rule>("atmost", json(R"({"limit": 5})"))};
  // What every reason says of the rule.
  const std::string ofRule = R"("ruleName": "atmost",
    "ruleClassName": "cppbind::ObjWrapperT<xrule_test::AtMost>",
    "ruleProperty": {"baseProperty": "a property", "originParameter": {"limit": 5}})";
};

TEST_F(ReasonTest, TheFullFormIsATreeByValidator) {
  EXPECT_EQ(json("{" + ofRule + "}"), reasonOf(*rule, nullptr)->getJsonValueInfo());
  const auto validator = boost::make_shared<RuleValidatorReason>("job 1", "machine 2");
  validator->addRefObj("day 3");
  validator->appendReason(reasonOf(*rule, R"({"reasonStr": "too many"})"));
  std::unique_ptr<Json::Value> none;
  validator->appendReason(new RuleReason(rule.get(), none));
  ValidatorReason report("plan");
  report.addReason({{"load", validator}, {"nothing", nullptr}});
  report.addReason("empty", boost::make_shared<RuleValidatorReason>());
  EXPECT_EQ(json(R"({"refObj": "plan", "ruleValidatorReasonList": [
      {"ruleValidatorName": "load", "ruleValidatorReason": {
        "refObjList": ["job 1", "machine 2", "day 3"], "ruleReasonList": [
          {)" + ofRule +
                 R"(, "detailInfo": {"reasonStr": "too many"}}, {)" + ofRule + R"(}]}},
      {"ruleValidatorName": "nothing"},
      {"ruleValidatorName": "empty", "ruleValidatorReason": {"ruleReasonList": []}}]})"),
            report.getJsonValueInfo());
  EXPECT_EQ(json(R"({"refObj": "", "ruleValidatorReasonList": []})"),
            ValidatorReason().getJsonValueInfo());
}

TEST_F(ReasonTest, TheOtherFormsAreFlat) {
  const auto first = boost::make_shared<RuleValidatorReason>("job 1");
  first->appendReason(reasonOf(*rule, R"({"reasonStr": "too many"})"));
  first->appendReason(reasonOf(*rule, R"({"reasonStr": 3})"));
  const auto noObjects = boost::make_shared<RuleValidatorReason>();
  noObjects->appendReason(reasonOf(*rule, nullptr));
  EXPECT_EQ(json("[]"), noObjects->getJsonValueInfoV2().at(0)["refObjList"]);
  const auto second = boost::make_shared<RuleValidatorReason>(std::vector<std::string>{"a", "b"});
  second->appendReason(reasonOf(*rule, "[1]"));
  ValidatorReason report("plan");
  report.addReason("x", first);
  report.addReason("y", second);
  EXPECT_EQ(json(R"({"refObj": "plan", "rulesBreak": [
      {)" + ofRule +
                 R"(, "detailInfo": {"reasonStr": "too many"}, "refObjList": ["job 1"]},
      {)" + ofRule +
                 R"(, "detailInfo": {"reasonStr": 3}, "refObjList": ["job 1"]},
      {)" + ofRule +
                 R"(, "detailInfo": [1], "refObjList": ["a", "b"]}]})"),
            report.getJsonValueInfoV2());
  report.addReason("z", nullptr);
  report.addReason("z", nullptr);
  second->appendReason(boost::shared_ptr<RuleReason>());
  EXPECT_EQ(3u, report.getFailedReasonCount());
  EXPECT_EQ(second->reasons()[0], report.getFailedReasons()[2]);
  const auto simple = report.toSimple();
  ASSERT_EQ(3u, simple->breakRules().size());
  EXPECT_EQ("atmost", simple->breakRules()[0].ruleName);
  EXPECT_EQ("too many", simple->breakRules()[0].reason);
  EXPECT_EQ("", simple->breakRules()[1].reason + simple->breakRules()[2].reason);

  ValidatorReason empty("plan");
  empty.addReason("x", boost::make_shared<RuleValidatorReason>("job 1"));
  EXPECT_EQ(json(R"({"refObj": "plan"})"), empty.getJsonValueInfoV2());
  empty.addReason("z", nullptr);
  expectAbort("Expression 'px != 0' is false", [&] { empty.getJsonValueInfoV2(); });
}

}  // namespace xrule_test
