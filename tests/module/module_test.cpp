// The frame that every module runs in.
#include "libvarrow/module/Module.h"

#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>
#include <csignal>
#include <stdexcept>

#include "libvarrow/json/json.h"
#include "libvarrow/module/CPUProfiler.h"
#include "libvarrow/module/CommonModuleStatDumper.h"
#include "module/recording.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"

namespace module_test {

using namespace libvarrow;
using test_support::readFile;
namespace fs = boost::filesystem;

class ModuleTest : public test_support::InTemporaryDirectory {
 protected:
  RecordingData data;
  Worker worker;
};

TEST_F(ModuleTest, DumpsSurroundTheWorkInOrder) {
  data.dumpPath = "out/pre_";
  worker.action = [](ModuleData& d) { d.dumpPath = "later/"; };
  worker.process(&data);
  const std::vector<std::string> expected = {
      "detail out/pre_in_detail.txt", "debug out/pre_before_process/", "work out/pre_",
      "detail later/out_detail.txt", "debug later/after_process/"};
  EXPECT_EQ(expected, data.calls) << "the output goes where the path points then";
  EXPECT_EQ("{\n \"steps\" : 0\n}\n", readFile("out/pre_in_info.json"));
  EXPECT_EQ("{\n \"steps\" : 1\n}\n", readFile("later/out_info.json"));
  EXPECT_EQ("{\n \"\" : []\n}\n", readFile("later/module_stat.json"));
}

TEST_F(ModuleTest, ThePathAtEntryHoldsForAllInputDumps) {
  struct Wandering : RecordingData {
    Json::Value getBaiscInfoJson() override {
      dumpPath = "moved/";
      return RecordingData::getBaiscInfoJson();
    }
  };
  Wandering wandering;
  wandering.dumpPath = "P/";
  worker.process(&wandering);
  EXPECT_TRUE(fs::exists("P/in_info.json"));
  EXPECT_EQ("detail P/in_detail.txt", wandering.calls.at(0));
  EXPECT_EQ("debug P/before_process/", wandering.calls.at(1));
  EXPECT_TRUE(fs::exists("moved/out_info.json"));
}

TEST_F(ModuleTest, WithAnEmptyPathDumpsGoToTheCurrentDirectory) {
  worker.process(&data);
  EXPECT_TRUE(fs::exists("in_info.json") && fs::exists("out_info.json"));
  EXPECT_EQ("detail in_detail.txt", data.calls.at(0));
  EXPECT_EQ("debug before_process/", data.calls.at(1));
}

TEST_F(ModuleTest, DataWithoutInfoIsNotDumpedButTheRestRuns) {
  data.hasInfo = false;
  worker.process(&data);
  EXPECT_FALSE(fs::exists("in_info.json") || fs::exists("out_info.json"));
  EXPECT_EQ(5u, data.calls.size());
  EXPECT_TRUE(fs::exists("module_stat.json"));
  EXPECT_EQ(nullptr, data.statisticsContainer);
}

TEST_F(ModuleTest, EveryRunAddsItsEntryWithTwoTimePointsBeforeTheWork) {
  StatisticsContainer root("root");
  data.statisticsContainer = &root;
  std::size_t timePointsAtWork = 0;
  worker.action = [&](ModuleData& d) {
    EXPECT_NE(&root, d.statisticsContainer);
    EXPECT_EQ("Module::Worker", d.statisticsContainer->name());
    const Json::Value entries = d.statisticsContainer->toJsonValue4Bind()["Module::Worker"];
    timePointsAtWork = entries[0]["TimeStatistic"]["timestamps"].size();
    d.statisticsContainer->getCountStatistics("mine", 3);
  };
  worker.process(&data);
  worker.process(&data);
  EXPECT_EQ(&root, data.statisticsContainer);
  EXPECT_EQ(2u, timePointsAtWork);
  const Json::Value runs = root.toJsonValue4Bind()["root"];
  ASSERT_EQ(2u, runs.size());
  const Json::Value& second = runs[1]["Module::Worker"];
  ASSERT_EQ(4u, second.size());
  data.hasInfo = false;
  worker.process(&data);
  const Json::Value third = root.toJsonValue4Bind()["root"][2]["Module::Worker"];
  EXPECT_TRUE(third[1].isMember("contextIn") && third[1]["contextIn"].isNull());
  EXPECT_EQ(2u, second[0]["TimeStatistic"]["timestamps"].size());
  EXPECT_EQ(1, second[1]["contextIn"]["steps"].asInt());
  EXPECT_EQ(3, second[2]["mine"].asInt());
  EXPECT_EQ(2, second[3]["contextOut"]["steps"].asInt());
}

TEST_F(ModuleTest, TheModulesOwnStatisticsGrowOverItsRuns) {
  worker.action = [this](ModuleData&) { worker.moduleStatistics.getCountStatistics("run"); };
  worker.process(&data);
  worker.process(&data);
  EXPECT_EQ(2u, File2Json("module_stat.json")[""].size());
}

TEST_F(ModuleTest, TheCurrentDirectoryMovesForTheWorkOnlyAndTheSwitchStaysOn) {
  data.dumpPath = directory.path().string() + "/run/";
  data.hasInfo = false;
  worker.setAutoChangeCurrentDirToDumpPath(false);
  EXPECT_THROW(worker.process(&data), fs::filesystem_error) << "it relies on the directory";
  fs::create_directory("run");
  fs::path during;
  worker.action = [&](ModuleData&) { during = fs::current_path(); };
  worker.process(&data);
  EXPECT_EQ(directory.path() / "run", during);
  EXPECT_EQ(directory.path(), fs::current_path());
  data.dumpPath = "run/";
  worker.process(&data);
  EXPECT_FALSE(fs::exists("run/run")) << "the output is dumped from the old directory again";
}

TEST_F(ModuleTest, AnExceptionLeavesEverythingAsTheStepHadIt) {
  StatisticsContainer root("root");
  data.statisticsContainer = &root;
  data.dumpPath = directory.path().string() + "/";
  worker.setAutoChangeCurrentDirToDumpPath(true);
  fs::create_directory("other");
  fs::current_path("other");
  worker.action = [](ModuleData&) { throw std::runtime_error("stop"); };
  EXPECT_THROW(worker.process(&data), std::runtime_error);
  EXPECT_NE(&root, data.statisticsContainer);
  EXPECT_EQ(directory.path(), fs::current_path());
  EXPECT_TRUE(fs::exists("in_info.json"));
  EXPECT_FALSE(fs::exists("out_info.json") || fs::exists("module_stat.json"));
  EXPECT_EQ(2u, root.toJsonValue4Bind()["root"][0]["Module::Worker"].size()) << "no contextOut";
}

TEST_F(ModuleTest, AModuleMadeByHandIsNamedByItsClassAndHasNoJson) {
  Add add;
  EXPECT_EQ("module_test::Add", add.getModuleName());
  const auto child = test_support::runInChild([&] { static_cast<void>(add.getJsonValue4Bind()); });
  EXPECT_EQ(SIGABRT, child.signal);
}

TEST_F(ModuleTest, BasicInfoIsTextIndentedByTabs) {
  Json::Value info;
  EXPECT_EQ("{\n\t\"steps\" : 0\n}\n", data.getBaiscInfo(&info));
  EXPECT_EQ(0, info["steps"].asInt());
  ModuleData base;
  EXPECT_EQ("null\n", base.getBaiscInfo(nullptr));
}

TEST_F(ModuleTest, TheStatDumperWritesItsOwnEntry) {
  StatisticsContainer root("root");
  root.getCountStatistics("elsewhere", 1);
  data.statisticsContainer = &root;
  CommonModuleStatDumper dumper(CommonModuleStatDumper::Data4Bind{"sub/stat.json"});
  dumper.process(&data);
  const Json::Value written = File2Json("sub/stat.json");
  const Json::Value& entry = written["Module::libvarrow::CommonModuleStatDumper"];
  ASSERT_EQ(2u, entry.size());
  EXPECT_TRUE(entry[0].isMember("TimeStatistic") && entry[1].isMember("contextIn"));
  EXPECT_EQ("sub/stat.json", dumper.getData4Bind().file);
  EXPECT_EQ(&data, dumper.processSpec(&data));
  CommonModuleStatDumper::Data4Bind record;
  Json::Value json;
  json["file"] = "x";
  cppbind::JsonDecodeBinder decoder;
  cppbind::Binder binder(&decoder, json);
  record.setBind(&binder, false);
  EXPECT_EQ("x", record.file) << "bound whatever the flag";
}

TEST_F(ModuleTest, AProfilerLeavesNoFile) {
  {
    CPUProfiler profiler("x_cpu.prof");
    const CPUProfiler copy(profiler);
    profiler = copy;
  }
  EXPECT_TRUE(fs::is_empty("."));
}

}  // namespace module_test
