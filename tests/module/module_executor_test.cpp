// A pipeline file end to end.
#include "libvarrow/module/ModuleExecutor.h"

#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>
#include <csignal>
#include <stdexcept>

#include "libvarrow/module/ChainedModule.h"
#include "module/recording.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"

namespace module_test {

using namespace libvarrow;
using test_support::writeFile;
namespace fs = boost::filesystem;

class ModuleExecutorTest : public test_support::InTemporaryDirectory {
 protected:
  ModuleExecutorTest() {
    reg.regClass<ChainedModule>("ChainedModule");
    reg.regClass<Add>("Add");
  }

  std::string errorOf(const std::string& file) {
    testing::internal::CaptureStdout();
    std::string what = "no error";
    try {
      ModuleExecutor(&reg, file, false);
    } catch (const std::exception& error) {
      what = error.what();
    }
    testing::internal::GetCapturedStdout();
    return what;
  }

  cppbind::ClassRegister reg;
};

TEST_F(ModuleExecutorTest, APipelineFileRunsOnTheHostsData) {
  writeFile("p.json", R"({"modules": [ // first
      {"Add": {"amount": 1}}, {"chainedmodule": {"modules": [{"add": {"amount": 10}}]}}]})");
  const ModuleExecutor executor(&reg, "p.json", false);
  const ModuleExecutor copy = executor;
  EXPECT_EQ(executor.mainModule(), copy.mainModule());
  StatisticsContainer root("root");
  RecordingData data;
  data.dumpPath = "run/";
  data.statisticsContainer = &root;
  copy.process(&data);
  EXPECT_EQ(11, data.steps);
  for (const char* file :
       {"run/in_info.json", "run/module_stat.json", "run/0_Add/out_info.json",
        "run/1_chainedmodule/0_add/in_info.json", "run/1_chainedmodule/0_add/module_stat.json"}) {
    EXPECT_TRUE(fs::exists(file)) << file;
  }
  const Json::Value main = root.toJsonValue4Bind()["root"][0];
  EXPECT_EQ("Module::libvarrow::ChainedModule", main.getMemberNames().at(0));
}

TEST_F(ModuleExecutorTest, EveryFaultOfAPipelineFileIsNamedWithItsPlace) {
  struct Case {
    const char* text;
    const char* error;  // how the message starts
  };
  const Case cases[] = {
      {"", "Can not parse file [p.json]: * Line 1, Column 1\n"},
      {R"({"modules": [{"Add")", "Can not parse file [p.json]: * Line 1, Column "},
      {"[]", "should be a object"},
      {"7", "should be a object"},
      {"{}", "modules: should be a object array"},
      {R"({"modules": {}})", "modules: should be a object array"},
      {R"({"modules": [5]})", "modules[0]: should be a object"},
      {R"({"modules": [], "extra": 1})", "unknown json key:[extra]"},
      {R"({"modules": [{"Add": {"amount": 1}}, {"Nobody": {}}]})",
       "modules[1]: Nobody miss register"},
      {R"({"modules": [{"Add": {}, "Nobody": {}}]})",
       "modules[0]: DynamicType object must have a unique key as it's type"},
      {R"({"modules": [{"Add": {}}]})", "modules[0].Add.amount: not found"},
      {R"({"modules": [{"Add": {"amount": null}}]})", "modules[0].Add.amount: not found"},
      {R"({"modules": [{"Add": {"amount": 1, "b": 2}}]})", "modules[0].Add: unknown json key:[b]"},
      {R"({"modules": [{"ChainedModule": {"modules": [{"Add": {"amount": "x"}}]}}]})",
       "modules[0].ChainedModule.modules[0].Add.amount: Value is not convertible to Int."},
      {R"({"modules": [{"Add": {"amount": 1, "from": "2024-02-30 00:00:00"}}]})",
       "modules[0].Add.from: cant not parse [2024-02-30 00:00:00] as time"}};
  for (const Case& c : cases) {
    writeFile("p.json", c.text);
    EXPECT_EQ(0u, errorOf("p.json").find(c.error)) << c.text << "\n" << errorOf("p.json");
  }
  EXPECT_EQ("conf missing.json file not found!", errorOf("missing.json"));
  EXPECT_EQ("Can not open file [.]", errorOf("."));
  const std::string tooLong(5000, 'x');
  EXPECT_EQ("conf " + tooLong + " file not found!", errorOf(tooLong)) << "no status to be read";
}

TEST_F(ModuleExecutorTest, UnknownKeysPassEverywhereWhenIgnored) {
  writeFile("p.json", R"({"modules": [{"Add": {"amount": 1, "b": 2}}], "extra": 1})");
  EXPECT_NO_THROW(ModuleExecutor(&reg, "p.json", true));
}

TEST_F(ModuleExecutorTest, AnExecutorThatWasMovedFromHasNoModule) {
  writeFile("p.json", R"({"modules": []})");
  ModuleExecutor executor(&reg, "p.json", false);
  const ModuleExecutor moved = std::move(executor);
  EXPECT_NE(nullptr, moved.mainModule());
  const auto child = test_support::runInChild([&] { executor.process(nullptr); });
  EXPECT_EQ(0u, child.errors.find("Expression 'px != 0' is false"));
}

TEST_F(ModuleExecutorTest, ANullRegisterEndsTheProcess) {
  const auto child = test_support::runInChild([] { ModuleExecutor(nullptr, "p.json", true); });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_EQ(0u, child.errors.find("Expression 'nullptr != moduleRegister' is false"));
}

}  // namespace module_test
