// All faults of rule files in one call. tests/agreement compares them with loading.
#include "libvarrow/xrule/rule_check.h"

#include "libvarrow/xrule/rule_file_schema.h"
#include "support/SchemaCheck.h"
#include "support/support.h"
#include "xrule/checks.h"

namespace xrule_test {

using namespace libvarrow;
using namespace test_support;

std::string faultsIn(const std::string& text) {
  const cppbind::ClassRegister reg = checks();
  std::string lines;
  for (const cppbind::Fault& fault : checkRuleText(text, reg).first) lines += fault.text() + "\n";
  return lines;
}

TEST(RuleCheck, AllFaultsOfAFileAreFound) {
  EXPECT_EQ(
      "2:13: error: AtMost.limit: not found\n"
      "3:1: error: AtMots miss register; did you mean \"AtMost\"?\n"
      "4:36: error: rule_list[0].Never: unknown json key:[odd]\n"
      "5:3: error: rule_list[1]: class NoRule is not a rule\n"
      "6:16: error: rule_list[2].rule_level: should be an integer\n"
      "6:34: error: rule_list[2].rule_list: should be a list\n"
      "7:1: error: rule_list[3]: should be a object\n"
      "7:8: error: rule_list[4]: rule_levle miss register; did you mean \"rule_level\"?\n",
      faultsIn(R"({"$schema": "rules.schema.json",
  "AtMost": {},
"AtMots": {"limit": 1}, "rule_list": [
{"AtMost": {"limit": 1}, "Never": {"odd": 1}},
{ "NoRule": {}},
{"rule_level": 1.5, "rule_list": {}},
null, {"rule_levle": 2}]})"));
  EXPECT_EQ("", faultsIn(R"([{"atmost": {"limit": 1, "rule_level": 2}, "rule_level": 2}, {}])"));
  EXPECT_EQ("", faultsIn("null"));
}

// A rule of rules of the same register.
struct AllOf : Rule {
  static cppbind::ClassRegister& reg() {
    static cppbind::ClassRegister rules = [] {
      cppbind::ClassRegister made = checks();
      made.regClass<AllOf>("AllOf");
      return made;
    }();
    return rules;
  }
  void setBind(cppbind::Binder* binder, bool) { binder->bind("parts", parts, nullptr, &reg()); }
  std::vector<boost::shared_ptr<Rule>> parts;
};

TEST(RuleCheck, TheSchemaContainsRulesOfRules) {
  const auto fileWith = [](const char* part) {
    return json("{\"AllOf\": {\"parts\": [{\"AtMost\": " + std::string(part) + "}]}}");
  };
  EXPECT_EQ((std::vector<bool>{true, false}),
            validBySchema(cppbind::schemaText(ruleFileSchema(AllOf::reg())),
                          {fileWith(R"({"limit": 1})"), fileWith("{}")}));
}

}  // namespace xrule_test
