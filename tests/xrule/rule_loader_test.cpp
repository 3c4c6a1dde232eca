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
  // Returns a text such as "AtMost 3, Never", and deletes the rules.
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

struct Early : virtual libvarrow::Rule {};
struct Late : virtual libvarrow::Rule {};
struct EarlyAndLate : Early, Late {};

TEST_F(RuleLoaderTest, RulesAreInTheOrderOfTheirKeysAndGroups) {
  EXPECT_EQ("", load("null") + load("{}") + load("[]"));
  reg.regClass<EarlyAndLate>("zero");
  EXPECT_EQ("AtMost 1, Never, AtMost 2, AtMost 3, never, zero", load(R"({
      "zero": {}, "AtMost": {"limit": 1}, "Never": {}, "rule_list": [
        {"AtMost": {"limit": 2}}, {"rule_list": [{"AtMost": {"limit": 3}}, {}]}, {"never": {}}]})"));
  EXPECT_EQ("never, Never", take(RuleLoader::loadRulesByJsonArrary(
                                json(R"([{"never": {}}, {"Never": {}}])"), &reg, 1)));
  EXPECT_EQ("Never", take(RuleLoader::loadRulesByJsonObj(json(R"({"Never": {}})"), &reg, 1)));
  EXPECT_EQ("never", take({RuleLoader::loadOneRuleByJsonObj("never", Json::objectValue, &reg, 1)}));
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
    load("[]");
    load(R"({"rule_list": [{"rule_level": 4, "Never": {}, "rule_list": [{"never": {}}]},
                           {"AtMost": {"limit": 2, "rule_level": 9}}]})");
  });
  EXPECT_EQ(0, child.exitCode) << child.errors;
  const std::string log = readFile("mine.txt");
  EXPECT_EQ(
      "\n<<<<<<\n<<<<<<\n|"
      "rule_name: Never\n|rule_parameter: {}\n\n|rule_level: 4\n|Created rule Never\n|"
      "rule_name: never\n|rule_parameter: {}\n\n|rule_level: 4\n|Created rule never\n|"
      "rule_name: AtMost\n|rule_parameter: {\n\t\"limit\" : 2,\n\t\"rule_level\" : 9\n}\n\n|"
      "rule_level: 1\n|Created rule AtMost\n|"
      "\n<<<<<<\nNever\nnever\nAtMost\n<<<<<<\n|",
      log.substr(log.find("\n<<<")));
}

// LeakSanitizer finds rules that are not deleted.
TEST_F(RuleLoaderTest, RulesCreatedBeforeAnErrorAreDeleted) {
  const std::pair<const char*, const char*> faults[] = {
      {R"([{"AtMost": {"limit": 1}}, {"AtMost": {}}])", "[1].AtMost.limit: not found"},
      {R"({"AtMost": {"limit": 1}, "rule_list": [{}, {"rule_list": [{"Unknown": {}}]}]})",
       "rule_list[1].rule_list[0]: Unknown miss register"}};
  for (const auto& [text, error] : faults) {
    EXPECT_EQ(error, errorOf([&, rules = text] { load(rules); })) << text;
  }
}

TEST_F(RuleLoaderTest, AnInvalidRuleFileEndsTheProcessAndIsNamed) {
  writeFile("broken.json", "{\"Never\": }");
  expectAbort("Failed to parse broken.json, * Line 1, Column 11\n",
              [&] { RuleLoader::loadRules("broken.json", &reg); });
  expectAbort("class NoRule is not a rule\n", [&] { load(R"({"NoRule": {}})"); });
  const auto child = runInChild([&] {
    InitRootLogger("none");
    load(R"({"rule_list": [{}, {"rule_list": [null]}]})");
  });
  EXPECT_EQ(0u, child.errors.find("rule file: rule_list[1].rule_list[0]: should be a object\n"
                                  "Expression 'false' is false"))
      << "reported once";
}

}  // namespace xrule_test
