// Rules from rule files.
#include "libvarrow/xrule/RuleLoader.h"

#include "libvarrow/log/log.h"
#include "support/support.h"
#include "xrule/checks.h"

namespace xrule_test {

using libvarrow::RuleLoader;
using namespace test_support;

class RuleLoaderTest : public InTemporaryDirectory {
 protected:
  // "AtMost 3, Never", and the rules are freed.
  static std::string take(const RuleLoader::Rules& rules) {
    std::string text;
    for (libvarrow::Rule* rule : rules) {
      const std::unique_ptr<libvarrow::Rule> owned(rule);
      text += (text.empty() ? "" : ", ") + rule->dumpStr();
      if (const auto* limited = dynamic_cast<AtMost*>(rule)) {
        text += " " + std::to_string(limited->limit);
      }
    }
    return text;
  }

  std::string load(const std::string& text) {
    return take(RuleLoader::loadRules(json(text), &reg));
  }

  cppbind::ClassRegister reg = checks();
};

TEST_F(RuleLoaderTest, RulesComeOutInTheOrderOfTheKeysWithGroupsAtTheirPlace) {
  EXPECT_EQ("", load("null") + load("{}") + load("[]"));
  EXPECT_EQ("AtMost 1, Never, AtMost 2, AtMost 3, never, zero 9", [&] {
    reg.regClass<AtMost>("zero");
    return load(R"({"zero": {"limit": 9}, "AtMost": {"limit": 1}, "Never": {}, "rule_list": [
        {"AtMost": {"limit": 2}}, {"rule_list": [{"AtMost": {"limit": 3}}, {}]}, {"never": {}}]})");
  }());
  EXPECT_EQ("AtMost 1, AtMost 1",
            load(R"([{"AtMost": {"limit": 1}}, {"AtMost": {"limit": 1, "rule_level": 5}}])"));
  EXPECT_EQ("never, Never", take(RuleLoader::loadRulesByJsonArrary(
                                json(R"([{"never": {}}, {"Never": {}}])"), &reg, 1)));
  EXPECT_EQ("never", take({RuleLoader::loadOneRuleByJsonObj("never", Json::objectValue, &reg, 1)}));
  writeFile("rules.json", "{\"Never\": {} /* a comment */}");
  EXPECT_EQ("Never", take(RuleLoader::loadRules("rules.json", &reg)));
}

struct Weighted : virtual cppbind::Object {};
struct WeightedRule : Weighted, libvarrow::Rule {};
struct Early : virtual libvarrow::Rule {};
struct Late : virtual libvarrow::Rule {};
struct EarlyAndLate : Early, Late {};

TEST_F(RuleLoaderTest, RulesMayHaveSeveralBases) {
  reg.regClass<WeightedRule>("WeightedRule");
  reg.regClass<Early>("Early");
  reg.regClass<EarlyAndLate>("EarlyAndLate");
  EXPECT_EQ("Early, EarlyAndLate, WeightedRule",
            load(R"({"WeightedRule": {}, "Early": {}, "EarlyAndLate": {}})"));
}

TEST_F(RuleLoaderTest, LevelsAreInheritedAndLogged) {
  writeFile("my.conf",
            "log4cplus.rootLogger=DEBUG, F\n"
            "log4cplus.appender.F=log4cplus::FileAppender\n"
            "log4cplus.appender.F.File=mine.txt\n"
            "log4cplus.appender.F.layout=log4cplus::PatternLayout\n"
            "log4cplus.appender.F.layout.ConversionPattern=%m|\n");
  const auto child = runInChild([&] {
    InitRootLogger("my.conf");
    take(RuleLoader::loadRulesByJsonObj(json(R"({"Never": {}})"), &reg, 7));
    load("[]");
    load(R"({"never": {}, "rule_list": [{"rule_level": 4, "Never": {}, "rule_list": [{}]},
                                        {"AtMost": {"limit": 2, "rule_level": 9}}]})");
  });
  EXPECT_EQ(0, child.exitCode) << child.errors;
  EXPECT_EQ(
      "rule_name: Never\n|rule_parameter: {}\n\n|rule_level: 7\n|Created rule Never\n|"
      "\n<<<<<<\n<<<<<<\n|"
      "rule_name: never\n|rule_parameter: {}\n\n|rule_level: 1\n|Created rule never\n|"
      "rule_name: Never\n|rule_parameter: {}\n\n|rule_level: 4\n|Created rule Never\n|"
      "rule_name: AtMost\n|rule_parameter: {\n\t\"limit\" : 2,\n\t\"rule_level\" : 9\n}\n\n|"
      "rule_level: 1\n|Created rule AtMost\n|"
      "\n<<<<<<\nnever\nNever\nAtMost\n<<<<<<\n|",
      [](std::string log) { return log.substr(log.find("rule_name")); }(readFile("mine.txt")));
}

TEST_F(RuleLoaderTest, RulesMadeBeforeAFailureAreFreed) {
  const std::pair<const char*, const char*> faults[] = {
      {R"({"AtMost": {"limit": 1}, "atmost": {"limit": 1.5}})",
       "atmost.limit: Value is not convertible to Int."},
      {R"([{"AtMost": {"limit": 1}}, {"AtMost": {}}])", "[1].AtMost.limit: not found"},
      {R"({"AtMost": {"limit": 1}, "rule_list": [{}, {"rule_list": [{"Unknown": {}}]}]})",
       "rule_list[1].rule_list[0]: Unknown miss register"},
      {R"({"AtMost": {"limit": 1}, "Never": {"x": 1}})", "Never: unknown json key:[x]"},
  };
  for (const auto& [text, error] : faults) {
    EXPECT_EQ(error, errorOf([&, rules = text] { load(rules); })) << text;
    EXPECT_EQ(0, AtMost::alive()) << text;
  }
  expectAbort("Assertion `rule' failed", [&] { load(R"({"NoRule": {}})"); });
  expectAbort("class NoRule is not a rule\n", [&] { load(R"({"NoRule": {}})"); });
}

TEST_F(RuleLoaderTest, WhatIsNoRuleFileEndsTheProcessAndSaysWhere) {
  writeFile("broken.json", "{\"Never\": }");
  writeFile("structure.json", "[{}, 1]");
  const std::pair<const char*, const char*> files[] = {
      {"broken.json", "Failed to parse broken.json, * Line 1, Column 11\n"},
      {"structure.json", "rule file structure.json: [1]: should be a object"}};
  for (const auto& [file, log] : files) {
    expectAbort(log, [&, name = file] { RuleLoader::loadRules(name, &reg); });
  }
  const std::pair<const char*, const char*> faults[] = {
      {"3", "should be a object"},
      {R"({"rule_list": [{}, {"rule_list": [null]}]})",
       "rule_list[1].rule_list[0]: should be a object"},
      {R"({"rule_list": [{"rule_level": "2"}]})", "rule_list[0].rule_level: should be an integer"}};
  for (const auto& [text, log] : faults) {
    // Once, whether the log goes there or not.
    for (const bool isConfigured : {false, true}) {
      const auto child = runInChild([&, rules = text] {
        if (isConfigured) InitRootLogger("none");
        load(rules);
      });
      const std::string start = std::string("rule file: ") + log + "\nExpression 'false' is false";
      EXPECT_EQ(start, child.errors.substr(0, start.size()));
    }
  }
}

}  // namespace xrule_test
