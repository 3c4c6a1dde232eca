// Rules from rule files.
#include "libvarrow/xrule/RuleLoader.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>

#include "libvarrow/log/log.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"
#include "support/errors.h"
#include "support/json.h"
#include "xrule/checks.h"

namespace xrule_test {

using libvarrow::RuleLoader;
using test_support::errorOf;
using test_support::json;

class RuleLoaderTest : public test_support::InTemporaryDirectory {
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

  static void expectEnd(const char* log, const std::function<void()>& call) {
    const auto child = test_support::runInChild(call);
    EXPECT_EQ(SIGABRT, child.signal) << log;
    EXPECT_NE(std::string::npos, child.errors.find(log)) << child.errors;
    EXPECT_NE(std::string::npos, child.errors.find("BackTraceException")) << log;
  }

  cppbind::ClassRegister reg = checks();
};

TEST_F(RuleLoaderTest, RulesComeOutInTheOrderOfTheKeysWithGroupsAtTheirPlace) {
  EXPECT_EQ("", load("null"));
  EXPECT_EQ("", load("{}"));
  EXPECT_EQ("", load("[]"));
  EXPECT_EQ("AtMost 1, Never, AtMost 2, AtMost 3, never, zero 9", [&] {
    reg.regClass<AtMost>("zero");
    return load(R"({"zero": {"limit": 9}, "AtMost": {"limit": 1}, "Never": {}, "rule_list": [
        {"AtMost": {"limit": 2}}, {"rule_list": [{"AtMost": {"limit": 3}}, {}]}, {"never": {}}]})");
  }());
  EXPECT_EQ("AtMost 1, AtMost 1",
            load(R"([{"AtMost": {"limit": 1}}, {"AtMost": {"limit": 1, "rule_level": 5}}])"));
  const Json::Value group = json(R"({"AtMost": {"limit": 1}, "Never": {}})");
  EXPECT_EQ("AtMost 1, Never", take(RuleLoader::loadRulesByJsonObj(group, &reg, 1)));
  Json::Value groups;
  groups.append(group);
  groups.append(group);
  EXPECT_EQ("AtMost 1, Never, AtMost 1, Never",
            take(RuleLoader::loadRulesByJsonArrary(groups, &reg, 1)));
  EXPECT_EQ("never", take({RuleLoader::loadOneRuleByJsonObj("never", Json::objectValue, &reg, 1)}));
  test_support::writeFile("rules.json", "{\"Never\": {} /* a comment */}");
  EXPECT_EQ("Never", take(RuleLoader::loadRules("rules.json", &reg)));
}

TEST_F(RuleLoaderTest, LevelsAreInheritedAndLogged) {
  test_support::writeFile("my.conf",
                          "log4cplus.rootLogger=DEBUG, F\n"
                          "log4cplus.appender.F=log4cplus::FileAppender\n"
                          "log4cplus.appender.F.File=mine.txt\n"
                          "log4cplus.appender.F.layout=log4cplus::PatternLayout\n"
                          "log4cplus.appender.F.layout.ConversionPattern=%m|\n");
  const auto child = test_support::runInChild([&] {
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
      [](std::string log) {
        return log.substr(log.find("rule_name"));
      }(test_support::readFile("mine.txt")));
}

TEST_F(RuleLoaderTest, RulesMadeBeforeAFailureAreFreed) {
  const std::pair<const char*, const char*> faults[] = {
      {R"({"AtMost": {"limit": 1}, "Unknown": {}})", "Unknown miss register"},
      {R"({"AtMost": {"limit": 1}, "atmost": {"limit": 1.5}})",
       "atmost.limit: Value is not convertible to Int."},
      {R"([{"AtMost": {"limit": 1}}, {"AtMost": {}}])", "[1].AtMost.limit: not found"},
      {R"({"AtMost": {"limit": 1}, "rule_list": [{}, {"rule_list": [{"Unknown": {}}]}]})",
       "rule_list[1].rule_list[0]: Unknown miss register"},
      {R"({"AtMost": {"limit": 1}, "Never": {"x": 1}})", "Never: unknown json key:[x]"},
      {R"({"AtMost": {"limit": 1}, "Never": [3]})", "Never: should be a object"},
  };
  for (const auto& [text, error] : faults) {
    EXPECT_EQ(error, errorOf([&, rules = text] { load(rules); })) << text;
    EXPECT_EQ(0, AtMost::alive()) << text;
  }
  const auto child = test_support::runInChild([&] { load(R"({"NoRule": {}})"); });
  EXPECT_NE(std::string::npos, child.errors.find("src/xrule/RuleLoader.cpp"));
  EXPECT_NE(std::string::npos, child.errors.find("Assertion `rule' failed"));
}

TEST_F(RuleLoaderTest, WhatIsNoRuleFileEndsTheProcessAndSaysWhere) {
  test_support::writeFile("broken.json", "{\"Never\": }");
  expectEnd("Failed to parse gone.json, can not open file\n",
            [&] { RuleLoader::loadRules("gone.json", &reg); });
  expectEnd("Failed to parse broken.json, * Line 1, Column 11\n",
            [&] { RuleLoader::loadRules("broken.json", &reg); });
  test_support::writeFile("structure.json", "[{}, 1]");
  expectEnd("rule file structure.json: [1]: should be a object",
            [&] { RuleLoader::loadRules("structure.json", &reg); });
  const std::pair<const char*, const char*> faults[] = {
      {"3", "rule file: should be a object"},
      {R"("Never")", "rule file: should be a object"},
      {"[{}, 1]", "rule file: [1]: should be a object"},
      {R"({"rule_list": {}})", "rule file: rule_list: should be a list"},
      {R"({"rule_list": [{}, {"rule_list": [null]}]})",
       "rule file: rule_list[1].rule_list[0]: should be a object"},
      {R"([{"rule_level": 1.5}])", "rule file: [0].rule_level: should be an integer"},
      {R"({"rule_list": [{"rule_level": "2"}]})",
       "rule file: rule_list[0].rule_level: should be an integer"},
  };
  for (const auto& [text, log] : faults) {
    expectEnd(log, [&, rules = text] { load(rules); });
  }
}

}  // namespace xrule_test
