#include <gtest/gtest.h>
#include <libvarrow/json/json.h>
#include <libvarrow/module/ModuleExecutor.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <cstdlib>
#include <stdexcept>

#include "JobShopData.h"
#include "modules/registerModules.h"
#include "shop_fixtures.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"

namespace fs = boost::filesystem;
using test_support::ChildResult;
using test_support::readFile;
using test_support::writeFile;

namespace {

const std::string kPipeline = JOBSHOP_FOLDER "/pipeline.json";

/// Runs the program itself, as a user does.
ChildResult jobshopRun(std::vector<std::string> arguments) {
  return test_support::runInChild([&] {
    arguments.insert(arguments.begin(), JOBSHOP_PROGRAM);
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    ::execv(JOBSHOP_PROGRAM, argv.data());
    std::_Exit(98);
  });
}

Json::Value scheduleIn(const std::string& folder) {
  return libvarrow::File2Json(folder + "/schedule.json");
}

class Program : public test_support::InTemporaryDirectory {};

TEST_F(Program, FindsTheOptimumOfBothShippedInstances) {
  const struct {
    const char* name;
    int optimum;
  } cases[] = {{"ft06", 55}, {"la01", 666}};
  for (const auto& c : cases) {
    const std::string instance = std::string(JOBSHOP_FOLDER "/data/") + c.name + ".txt";
    const ChildResult run = jobshopRun({"--instance", instance, kPipeline, c.name});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_NE(run.output.find("makespan     " + std::to_string(c.optimum)), std::string::npos)
        << run.output;
    EXPECT_EQ(scheduleIn(c.name)["makespan"].asInt(), c.optimum);
    EXPECT_EQ(scheduleIn(c.name)["instance"], c.name);
  }
}

TEST_F(Program, LeavesEverythingInTheFolderOfTheRun) {
  // The second run replaces the first; a slash at the end changes nothing.
  ASSERT_EQ(jobshopRun({kPipeline, "out/run"}).exitCode, 0);
  writeFile("out/run/dump/9_Stale/in_info.json", "{}");
  const ChildResult run = jobshopRun({kPipeline, "out/run/"});
  EXPECT_NE(run.output.find("run folder   " + (directory.path() / "out/run").string() + "\n"),
            std::string::npos)
      << run.output;

  for (const char* file :
       {"schedule.json", "schedule.csv", "gantt.svg", "log.txt", "statistics.json",
        "statistics_of_last_module.json", "dump/in_info.json", "dump/0_ReadInstance/out_info.json",
        "dump/1_ChainedModule/4_Dispatch/module_stat.json",
        "dump/1_ChainedModule/after_process/schedule.csv", "dump/3_WriteSchedule/out_detail.txt"}) {
    EXPECT_TRUE(fs::exists(fs::path("out/run") / file)) << file;
  }
  EXPECT_FALSE(fs::exists("out/run/dump/9_Stale"));
  EXPECT_EQ(std::distance(fs::directory_iterator("."), fs::directory_iterator()), 1);

  const std::string statistics = readFile("out/run/statistics.json");
  for (const char* name : {"Module::Dispatch", "waiting_times", "makespans", "dispatching",
                           "operations_by_machine", "\"violations\" : \"0/36;0%\""}) {
    EXPECT_NE(statistics.find(name), std::string::npos) << name;
  }
}

TEST_F(Program, ADumpedInstanceCanBeReadAgain) {
  ASSERT_EQ(jobshopRun({kPipeline, "first"}).exitCode, 0);
  const std::string dumped = "first/dump/0_ReadInstance/after_process/instance.txt";
  ASSERT_EQ(jobshopRun({"--instance", dumped, kPipeline, "second"}).exitCode, 0);
  EXPECT_EQ(scheduleIn("second")["jobs"], scheduleIn("first")["jobs"]);
}

TEST_F(Program, ThePipelineChoosesWhatRunsAndWhatIsKept) {
  writeFile("shop/data/my.txt", readFile(JOBSHOP_FOLDER "/data/ft06.txt"));
  writeFile("shop/p.json", R"({"modules": [
      {"readinstance": {"file": "data/my.txt"}},
      {"CHAINEDMODULE": {"modules": [
        {"Dispatch": {"rule": "MWKR"}},
        {"Dispatch": {"rule": "SPT", "keep_best": false}},
        {"Dispatch": {"rule": "SPT", "tries": 50, "noise": 0}}]}},
      {"WriteSchedule": {"json": "deep/plan.json", "csv": "", "gantt": "",
                         "start": "2024-03-05 06:00:00", "time_unit": "00:30:00"}}]})");
  const ChildResult run = jobshopRun({"shop/p.json", "run"});
  ASSERT_EQ(run.exitCode, 0) << run.errors;
  const Json::Value plan = libvarrow::File2Json("run/deep/plan.json");
  EXPECT_EQ(plan["origin"], "SPT");
  EXPECT_EQ(plan["jobs"][5][0]["end"], 3);
  EXPECT_EQ(plan["jobs"][5][0]["end_clock"], "2024-03-05 07:30:00");
  EXPECT_FALSE(fs::exists("run/schedule.csv"));
  EXPECT_FALSE(fs::exists("run/gantt.svg"));
}

TEST_F(Program, ABadPipelineIsOneLineWithThePathToTheFault) {
  const struct {
    const char* pipeline;
    const char* fault;
  } cases[] = {
      {"", "p.json: Can not parse file"},
      {R"({"modules": [)", "p.json: Can not parse file"},
      {"[1, 2]", "p.json: should be a object"},
      {"{}", "p.json: modules: should be a object array"},
      {R"({"modules": [], "more": 1})", "p.json: unknown json key:[more]"},
      {R"({"modules": [{"Nope": {}}]})", "p.json: modules[0]: Nope miss register"},
      {R"({"modules": [{"No\npe\u001b[31m": {}}]})",
       "p.json: modules[0]: No pe [31m miss register"},
      {R"({"modules": [{"CheckSchedule": {}, "Dispatch": {}}]})",
       "p.json: modules[0]: DynamicType object must have a unique key"},
      {R"({"modules": [{"CheckSchedule": {}}, {"Dispatch": {}}]})",
       "p.json: modules[1].Dispatch.rule: not found"},
      {R"({"modules": [{"ReadInstance": {"file": null}}]})",
       "p.json: modules[0].ReadInstance.file: not found"},
      {R"({"modules": [{"Dispatch": {"rule": 5}}]})",
       "p.json: modules[0].Dispatch.rule: Value is not convertible to string"},
      {R"({"modules": [{"ChainedModule": {"modules": [{"Dispatch": {"rule": "EDD"}}]}}]})",
       "p.json: modules[0].ChainedModule.modules[0].Dispatch.rule: no dispatching rule \"EDD\"; "
       "there are SPT, LPT, MWKR, MOPNR, FIFO"},
      {R"({"modules": [{"Dispatch": {"rule": "SPT", "tries": 1.5}}]})",
       "p.json: modules[0].Dispatch.tries: "},
      {R"({"modules": [{"Dispatch": {"rule": "SPT", "tries": 0}}]})",
       "p.json: modules[0].Dispatch.tries: expected a number from 1 to 1000000"},
      {R"({"modules": [{"Dispatch": {"rule": "SPT", "noise": 1.5}}]})",
       "p.json: modules[0].Dispatch.noise: expected a number from 0 to 1"},
      {R"({"modules": [{"Dispatch": {"rule": "SPT", "%s%n": 1}}]})",
       "p.json: modules[0].Dispatch: unknown json key:[%s%n]"},
      {R"({"modules": [{"WriteSchedule": {"start": "2024-02-30 06:00:00"}}]})",
       "p.json: modules[0].WriteSchedule.start: cant not parse [2024-02-30 06:00:00] as time"},
      {R"({"modules": [{"WriteSchedule": {"time_unit": "00:00:00"}}]})",
       "p.json: modules[0].WriteSchedule.time_unit: expected at least 00:00:01"},
      // What shows only when it runs is told with the step's place among the dumps.
      {R"({"modules": [{"ChainedModule": {"modules": [{"ReadInstance": {"file": "bad.txt"}}]}}]})",
       "bad.txt:2: expected a time from 0 to 1000000000, found \"x\""},
      {R"({"modules": [{"ReadInstance": {"file": "gone.txt"}}]})", "p.json: 0_ReadInstance: "},
      {R"({"modules": [{"Dispatch": {"rule": "SPT"}}]})",
       "p.json: 0_Dispatch: no instance yet: a ReadInstance has to come before"},
      {R"({"modules": [{"ReadInstance": {"file": "one.txt"}}, {"WriteSchedule": {}}]})",
       "p.json: 1_WriteSchedule: no schedule yet: a Dispatch has to come before"},
      {R"({"modules": [{"ReadInstance": {"file": "one.txt"}}, {"Dispatch": {"rule": "SPT"}},
                       {"WriteSchedule": {"gantt": "log.txt/gantt.svg"}}]})",
       "p.json: 2_WriteSchedule: cannot write log.txt/gantt.svg"},
  };
  writeFile("bad.txt", "1 1\n0 x\n");
  writeFile("one.txt", "1 1\n0 5\n");
  for (const auto& c : cases) {
    writeFile("p.json", c.pipeline);
    const ChildResult run = jobshopRun({"p.json", "run"});
    EXPECT_EQ(run.exitCode, 1) << c.pipeline;
    EXPECT_EQ(run.errors.find('\n'), run.errors.size() - 1) << run.errors;
    EXPECT_EQ(run.errors.find("jobshop: p.json: "), 0u) << run.errors;
    EXPECT_NE(run.errors.find(c.fault), std::string::npos) << run.errors;
  }
}

TEST_F(Program, WrongArgumentsAndFoldersAreOneLine) {
  writeFile("file", "");
  const struct {
    std::vector<std::string> arguments;
    int status;
    const char* error;
  } cases[] = {
      {{}, 2, "jobshop: no pipeline file given; see jobshop --help\n"},
      {{"a", "b", "c"}, 2, "jobshop: too many arguments; see jobshop --help\n"},
      {{"--instance"}, 2, "jobshop: --instance needs a file; see jobshop --help\n"},
      {{"--in\nstance", "x"}, 2, "jobshop: no option --in stance; see jobshop --help\n"},
      {{kPipeline, "file/run"}, 1, "file/run"},
      {{"gone.json", "run"}, 1, "jobshop: gone.json: conf "},
  };
  for (const auto& c : cases) {
    const ChildResult run = jobshopRun(c.arguments);
    EXPECT_EQ(run.exitCode, c.status) << c.error;
    EXPECT_NE(run.errors.find(c.error), std::string::npos) << run.errors;
    EXPECT_EQ(run.errors.find('\n'), run.errors.size() - 1) << run.errors;
  }
  const ChildResult help = jobshopRun({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_EQ(help.output.find("Usage: jobshop"), 0u);
}

/// Has the last operation start one time unit too soon.
class SpoilSchedule : public libvarrow::Module {
 public:
  void processImp(libvarrow::ModuleData* data) override {
    auto& shop = jobshop::JobShopData::of(data);
    jobshop::Schedule schedule = shop.schedule();
    --schedule.operations.back().start;
    --schedule.operations.back().end;
    shop.setSchedule(std::move(schedule));
  }
};

TEST_F(Program, APipelineStopsAtAScheduleThatIsNotFeasible) {
  writeFile("one.txt", "1 2\n0 5\t1 6\n");
  writeFile("p.json", R"({"modules": [{"ReadInstance": {"file": "one.txt"}},
      {"Dispatch": {"rule": "SPT"}}, {"Spoil": {}}, {"CheckSchedule": {}}, {"WriteSchedule": {}}]})");
  cppbind::ClassRegister classes;
  jobshop::registerModules(classes);
  classes.regClass<SpoilSchedule>("Spoil");
  libvarrow::StatisticsContainer statistics("run");
  jobshop::JobShopData data({directory.path(), ""});
  data.dumpPath = "dump/";
  data.statisticsContainer = &statistics;
  try {
    libvarrow::ModuleExecutor(&classes, "p.json", false).process(&data);
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(),
                 "the schedule is not feasible: operation 1 of job 0 (machine 1, 4 to 10) starts "
                 "before the end of operation 0 of job 0 (machine 0, 0 to 5) (1 in all)");
  }
  EXPECT_FALSE(fs::exists("schedule.json"));
}

}  // namespace
