// All faults of pipeline files in one call, also those that end the process when they are loaded.
#include "libvarrow/module/pipeline_check.h"

#include "libvarrow/module/ModuleExecutor.h"
#include "libvarrow/module/ModuleLoader.h"
#include "module/recording.h"
#include "support/support.h"

namespace module_test {

using namespace libvarrow;
using namespace test_support;

class PipelineCheckTest : public InTemporaryDirectory {
 protected:
  PipelineCheckTest() { loader.classRegister().regClass<Add>("Add"); }

  std::string faultsIn(const std::string& text, bool ignoreUnknownKeys = false) {
    writeFile("p.json", text);
    std::string lines;
    const auto faults = checkPipelineFile("p.json", loader.classRegister(), ignoreUnknownKeys);
    for (const cppbind::Fault& fault : faults.first) lines += fault.text() + "\n";
    return lines;
  }

  ModuleLoader loader;
};

TEST_F(PipelineCheckTest, EveryLayoutIsRecognised) {
  EXPECT_EQ("1:34: error: modules[0].Add: unknown json key:[odd]\n",
            faultsIn(R"({"modules": [{"Add": {"amount":1,"odd": 2}}], "$schema": "s.json"})"));
  EXPECT_EQ("", faultsIn(R"({"modules": [{"Add": {"amount":1,"odd": 2}}]})", true));
  EXPECT_EQ("1:16: error: unknown json key:[$schema]\n",
            faultsIn(R"({"modules":[], "$schema": 1})"));
  EXPECT_EQ("1:25: error: mainModule.Add.amount: not found\n",
            faultsIn(R"({"mainModule":  {"Add": {}}})"));
  EXPECT_EQ("1:1: error: modules: should be a object array\n", faultsIn("{}"));
  EXPECT_EQ(
      "1:1: error: modules: should be a object array\n"
      "1:2: error: unknown json key:[named_module]; did you mean \"named_modules\"?\n",
      faultsIn(R"({"named_module": {}})"));
  EXPECT_EQ("1:2: error: modules: should be a object array; did you mean \"modules\"?\n",
            faultsIn(R"({"moduls": []})"));
  EXPECT_EQ("1:1: error: should be a object\n", faultsIn("[]"));
  EXPECT_EQ("1:18: error: Can not parse file [p.json]: * Line 1, Column 18   Missi",
            faultsIn(R"({"named_modules" {}})").substr(0, 69));
  const auto missing = checkPipelineFile("none.json", loader.classRegister());
  EXPECT_EQ("error: Can not open file [none.json]", missing.first.at(0).text());
}

TEST_F(PipelineCheckTest, StructureThatEndsTheProcessIsAFault) {
  const std::pair<const char*, const char*> cases[] = {
      {R"({"named_modules": {"a": {"Add": {}, "B": {}}}})",
       "1:25: error: named_modules.a: DynamicType object must have a unique key as it's type\n"},
      {R"({"chained_module": {}})", "1:20: error: chained_module: should be a list\n"},
      {R"({"chained_module": [1]})", "1:21: error: chained_module[0]: should be a string\n"},
      {R"({"named_modules": {"prepare": {"Add": {"amount": 1}}}, "chained_module": ["prepaer"]})",
       "1:75: error: chained_module[0]: \"prepaer\" is no named module; did you mean "
       "\"prepare\"?\n"},
  };
  for (const auto& [text, fault] : cases) {
    EXPECT_EQ(fault, faultsIn(text));
    expectAbort("", [&] { ModuleLoader(loader).loadFile("p.json"); });
  }
  EXPECT_EQ(
      "1:19: error: named_modules: should be a object\n"
      "1:23: warning: unknown json key:[chaned_module] is ignored; did you mean "
      "\"chained_module\"?\n",
      faultsIn(R"({"named_modules": [], "chaned_module": []})"));
  EXPECT_EQ(
      "1:41: error: named_modules.a.Add.amount: Value is not convertible to Int.\n"
      "1:54: error: named_modules.b: Adt miss register; did you mean \"Add\"?\n",
      faultsIn(
          R"({"named_modules": {"a":{"Add":{"amount":"x"}}, "b": {"Adt": {}}}, "chained_module": ["a", "b"]})"));
}

}  // namespace module_test
