// The dumps, statistics and directories of every module's run.
#include "libvarrow/module/Module.h"

#include <boost/filesystem/operations.hpp>
#include <stdexcept>

#include "libvarrow/json/json.h"
#include "module/recording.h"
#include "support/support.h"

namespace module_test {

using namespace libvarrow;
using namespace test_support;
namespace fs = boost::filesystem;

class ModuleTest : public InTemporaryDirectory {
 protected:
  RecordingData data;
  Worker worker;
};

TEST_F(ModuleTest, AStepDumpsInsideItsEventsToThePathOfThatMoment) {
  Listener listener;
  data.setObserver(&listener);
  data.dumpPath = "out/pre_";
  data.movesTo = "moved/";
  worker.action = [](ModuleData& d) { d.dumpPath = "later/"; };
  worker.process(&data);
  const std::vector<std::string> expected = {
      "begins Worker", "detail out/pre_in_detail.txt", "debug out/pre_before_process/",
      "work moved/",   "detail later/out_detail.txt",  "debug later/after_process/",
      "ends Worker"};
  EXPECT_EQ(expected, data.calls);
  EXPECT_EQ("{\n \"steps\" : 0\n}\n", readFile("out/pre_in_info.json"));
  EXPECT_EQ("{\n \"steps\" : 1\n}\n", readFile("later/out_info.json"));
  EXPECT_EQ("{\n \"\" : []\n}\n", readFile("later/module_stat.json"));
  Json::Value info;
  EXPECT_EQ("{\n\t\"steps\" : 1\n}\n", data.getBaiscInfo(&info));
  EXPECT_EQ(1, info["steps"].asInt());
}

TEST_F(ModuleTest, EveryRunAddsAnEntryWithTwoTimePoints) {
  StatisticsContainer root("root");
  data.statisticsContainer = &root;
  worker.action = [&](ModuleData& d) {
    EXPECT_EQ("Module::Worker", d.statisticsContainer->name());
    const Json::Value entries = d.statisticsContainer->toJsonValue4Bind()["Module::Worker"];
    EXPECT_EQ(2u, entries[0]["TimeStatistic"]["timestamps"].size());
    d.statisticsContainer->getCountStatistics("mine", 3);
    worker.moduleStatistics.getCountStatistics("run");
  };
  data.hasInfo = false;
  worker.process(&data);
  EXPECT_FALSE(fs::exists("in_info.json") || fs::exists("out_info.json"));
  EXPECT_EQ("detail in_detail.txt", data.calls.at(0)) << "an empty path is the current directory";
  data.hasInfo = true;
  worker.process(&data);
  EXPECT_TRUE(fs::exists("in_info.json") && fs::exists("out_info.json"));
  EXPECT_EQ(&root, data.statisticsContainer);
  EXPECT_EQ(2u, File2Json("module_stat.json")[""].size())
      << "the module's statistics grow with its runs";
  const Json::Value runs = root.toJsonValue4Bind()["root"];
  ASSERT_EQ(2u, runs.size());
  const Json::Value& second = runs[1]["Module::Worker"];
  ASSERT_EQ(4u, second.size());
  EXPECT_EQ(2u, second[0]["TimeStatistic"]["timestamps"].size());
  EXPECT_EQ(1, second[1]["contextIn"]["steps"].asInt());
  EXPECT_EQ(3, second[2]["mine"].asInt());
  EXPECT_EQ(2, second[3]["contextOut"]["steps"].asInt());
}

TEST_F(ModuleTest, TheCurrentDirectoryIsRestoredUnlessTheWorkThrows) {
  data.dumpPath = directory.path().string() + "/run/";
  data.hasInfo = false;
  worker.setAutoChangeCurrentDirToDumpPath(false);
  EXPECT_THROW(worker.process(&data), fs::filesystem_error) << "the argument is ignored";
  fs::create_directory("run");
  fs::path during;
  worker.action = [&](ModuleData&) { during = fs::current_path(); };
  worker.process(&data);
  EXPECT_EQ(directory.path() / "run", during);
  EXPECT_EQ(directory.path(), fs::current_path());
  data.dumpPath = "run/";
  worker.process(&data);
  EXPECT_FALSE(fs::exists("run/run")) << "the output is dumped from the old directory again";

  StatisticsContainer root("root");
  data.statisticsContainer = &root;
  data.hasInfo = true;
  worker.action = [](ModuleData&) { throw std::runtime_error("stop"); };
  EXPECT_THROW(worker.process(&data), std::runtime_error);
  EXPECT_NE(&root, data.statisticsContainer);
  EXPECT_EQ(directory.path() / "run", fs::current_path());
  EXPECT_TRUE(fs::exists("in_info.json"));
  EXPECT_FALSE(fs::exists("out_info.json") || fs::exists("run"));
  EXPECT_EQ(2u, root.toJsonValue4Bind()["root"][0]["Module::Worker"].size()) << "no contextOut";
}

}  // namespace module_test
