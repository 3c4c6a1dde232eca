// A pipeline file end to end.
#include "libvarrow/module/ModuleExecutor.h"

#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>
#include <csignal>

#include "libvarrow/module/ChainedModule.h"
#include "module/recording.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"
#include "support/errors.h"

namespace module_test {

using namespace libvarrow;
using test_support::writeFile;

class ModuleExecutorTest : public test_support::InTemporaryDirectory {
 protected:
  ModuleExecutorTest() {
    reg.regClass<ChainedModule>("ChainedModule");
    reg.regClass<Add>("Add");
  }

  std::string errorOf(const std::string& file) {
    return test_support::errorOf([&] { ModuleExecutor(&reg, file, false); });
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
  EXPECT_TRUE(boost::filesystem::exists("run/1_chainedmodule/0_add/module_stat.json"));
  const Json::Value main = root.toJsonValue4Bind()["root"][0];
  EXPECT_EQ("Module::libvarrow::ChainedModule", main.getMemberNames().at(0));
}

TEST_F(ModuleExecutorTest, EveryFaultOfAPipelineFileIsNamedWithItsPlace) {
  // How the message starts.
  const std::pair<const char*, const char*> cases[] = {
      {"", "Can not parse file [p.json]: * Line 1, Column 1\n"},
      {R"({"modules": {}})", "modules: should be a object array"},
      {R"({"modules": [], "extra": 1})", "unknown json key:[extra]"},
      {R"({"modules": [{"Add": {"amount": 1}}, {"Nobody": {}}]})",
       "modules[1]: Nobody miss register"},
      {R"({"modules": [{"ChainedModule": {"modules": [{"Add": {"amount": "x"}}]}}]})",
       "modules[0].ChainedModule.modules[0].Add.amount: Value is not convertible to Int."}};
  for (const auto& [text, error] : cases) {
    writeFile("p.json", text);
    EXPECT_EQ(0u, errorOf("p.json").find(error)) << text << "\n" << errorOf("p.json");
  }
  EXPECT_EQ("conf missing.json file not found!", errorOf("missing.json"));
  EXPECT_EQ("Can not open file [.]", errorOf("."));
  const std::string tooLong(5000, 'x');
  EXPECT_EQ("conf " + tooLong + " file not found!", errorOf(tooLong)) << "no status to be read";

  writeFile("p.json", R"({"modules": [{"Add": {"amount": 1, "b": 2}}], "extra": 1})");
  EXPECT_NO_THROW(ModuleExecutor(&reg, "p.json", true)) << "unknown keys pass when ignored";
}

TEST_F(ModuleExecutorTest, ANullRegisterAndRunningAnExecutorThatWasMovedFromEndTheProcess) {
  const auto child = test_support::runInChild([] { ModuleExecutor(nullptr, "p.json", true); });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_EQ(0u, child.errors.find("Expression 'nullptr != moduleRegister' is false"));
  writeFile("p.json", R"({"modules": []})");
  ModuleExecutor executor(&reg, "p.json", false);
  const ModuleExecutor moved = std::move(executor);
  EXPECT_NE(nullptr, moved.mainModule());
  const auto running = test_support::runInChild([&] { executor.process(nullptr); });
  EXPECT_EQ(0u, running.errors.find("Expression 'px != 0' is false"));
}

}  // namespace module_test
