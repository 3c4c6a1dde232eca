// The program, run as a process.
#include <libvarrow/json/json.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <cstdlib>

#include "support/support.h"

namespace fs = boost::filesystem;
using namespace test_support;

namespace {

const std::string kPipeline = JOBSHOP_FOLDER "/pipeline.json";

/// Runs the program.
ChildResult jobshopRun(std::vector<std::string> arguments) {
  return runInChild([&] {
    arguments.insert(arguments.begin(), JOBSHOP_PROGRAM);
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    ::execv(argv.front(), argv.data());
    std::_Exit(98);
  });
}

Json::Value scheduleIn(const std::string& folder) {
  return libvarrow::File2Json(folder + "/schedule.json");
}

void expectOneLine(const ChildResult& run, int status, const std::string& error) {
  EXPECT_EQ(status, run.exitCode) << error;
  EXPECT_EQ(0u, run.errors.find("jobshop: ")) << run.errors;
  EXPECT_TRUE(contains(run.errors, error)) << run.errors << error;
  EXPECT_EQ(run.errors.size() - 1, run.errors.find('\n')) << run.errors;
}

class Program : public InTemporaryDirectory {};

TEST_F(Program, FindsTheOptimumOfBothInstancesAndOfItsDumps) {
  const std::pair<std::string, std::string> cases[] = {{"ft06", "55"}, {"la01", "666"}};
  for (const auto& [name, optimum] : cases) {
    const ChildResult run =
        jobshopRun({"--instance", JOBSHOP_FOLDER "/data/" + name + ".txt", kPipeline, name});
    EXPECT_EQ("", run.errors);
    EXPECT_TRUE(contains(run.output, "makespan     " + optimum)) << run.output;
    EXPECT_EQ(optimum, scheduleIn(name)["makespan"].asString());
    const std::string dumped = name + "/dump/0_ReadInstance/after_process/instance.txt";
    EXPECT_EQ(0, jobshopRun({"--instance", dumped, kPipeline, "again"}).exitCode);
    EXPECT_EQ(scheduleIn(name)["jobs"], scheduleIn("again")["jobs"]);
  }
}

TEST_F(Program, ReplacesTheDumpsOfAnEarlierRun) {
  writeFile("out/run/dump/9_Stale/in_info.json", "{}");
  jobshopRun({kPipeline, "out/run"});
  EXPECT_TRUE(fs::exists("out/run/dump/9_Stale")) << "the folder was not of a run";
  jobshopRun({kPipeline, "out/run/"});
  EXPECT_FALSE(fs::exists("out/run/dump/9_Stale"));
  for (const char* file : {"schedule.csv", "gantt.svg", "log.txt", "dump/3_WriteSchedule"}) {
    EXPECT_TRUE(fs::exists(fs::path("out/run") / file)) << file;
  }
  EXPECT_EQ(1, std::distance(fs::directory_iterator("."), fs::directory_iterator()));
  EXPECT_TRUE(contains(readFile("out/run/statistics.json"), "\"tries\" : \"500/500;100%\""));
}

TEST_F(Program, PlansInShiftsKeepsTheRulesAndDumpsTheCalendar) {
  const ChildResult run = jobshopRun({JOBSHOP_FOLDER "/pipeline_shifts.json", "run"});
  ASSERT_EQ(0, run.exitCode) << run.errors;
  EXPECT_TRUE(contains(run.output, "clock        2024-03-01 06:00:00 to 2024-03-0"));
  EXPECT_TRUE(contains(run.output, "rules        all 4 kept\n")) << run.output;
  EXPECT_TRUE(contains(readFile("run/dump/1_SetCalendars/out_detail.txt"),
                       "machine 3 in the first week, efficiency 0.8\n"
                       "  [2024-03-01 06:00:00,2024-03-01 10:00:00]:04:00:00\n"));
}

TEST_F(Program, ThePipelineSelectsTheModulesAndTheirOutput) {
  writeFile("shop/data/my.txt", readFile(JOBSHOP_FOLDER "/data/ft06.txt"));
  writeFile("shop/p.json", R"({"modules": [
      {"ReadInstance": {"file": "data/my.txt"}}, {"Dispatch": {"rule": "MWKR"}},
      {"Dispatch": {"rule": "SPT", "keep_best": false}},
      {"WriteSchedule": {"json": "deep/plan.json", "csv": "",
                         "start": "2024-03-05 06:00:00", "time_unit": "00:30:00"}}]})");
  jobshopRun({"shop/p.json", "run"});
  const Json::Value plan = libvarrow::File2Json("run/deep/plan.json");
  EXPECT_EQ("SPT", plan["origin"].asString());
  EXPECT_EQ("2024-03-05 07:30:00", plan["jobs"][5][0]["end_clock"].asString());
  EXPECT_FALSE(fs::exists("run/schedule.csv"));
}

TEST_F(Program, AnInvalidPipelineIsReportedInOneLineWithThePath) {
  const std::pair<std::string, std::string> cases[] = {
      {R"({"No\npe%s%n\u001b[31m": {}})", "modules[0]: No pe%s%n [31m miss register"},
      {R"({"Dispatch": {"rule": "EDD"}})",
       "modules[0].Dispatch.rule: \"EDD\" is not one of \"SPT\", \"LPT\", \"MWKR\", "},
      // An error of a run is reported with the step's path among the dumps.
      {R"({"ChainedModule": {"modules": [{"ReadInstance": {"file": "bad.txt"}}]}})",
       "0_ChainedModule/0_ReadInstance: " + directory.path().string() +
           "/bad.txt:2: expected a time from 0 to 1000000000, found \"x\""},
      {R"({"ReadInstance": {"file": "one.txt"}}, {"WriteSchedule": {}})",
       "1_WriteSchedule: no schedule: Dispatch must run before this module"},
      {R"({"ReadInstance": {"file": "one.txt"}}, {"Dispatch": {"rule": "SPT"}},
          {"DrawGantt": {"file": "log.txt/gantt.svg"}})",
       "2_DrawGantt: cannot write log.txt/gantt.svg"}};
  writeFile("bad.txt", "1 1\n0 x\n");
  writeFile("one.txt", "1 1\n0 5\n");
  for (const auto& [modules, fault] : cases) {
    writeFile("p.json", "{\"modules\": [" + modules + "]}");
    expectOneLine(jobshopRun({"p.json", "run"}), 1, "jobshop: p.json: " + fault);
  }
}

TEST_F(Program, WrongArgumentsAreReportedInOneLine) {
  writeFile("file", "");
  expectOneLine(jobshopRun({}), 2, "jobshop: no pipeline file given; see jobshop --help\n");
  expectOneLine(jobshopRun({"a", "b", "c"}), 2, ": too many arguments; see jobshop --help\n");
  expectOneLine(jobshopRun({"--in\nst", "x"}), 2, ": unknown option --in st; see jobshop --help\n");
  expectOneLine(jobshopRun({kPipeline, "file/run"}), 1, "file/run");
  expectOneLine(jobshopRun({"gone.json", "run"}), 1, "jobshop: gone.json: conf ");
  const ChildResult help = jobshopRun({"--help"});
  EXPECT_TRUE(help.exitCode == 0 && contains(help.output, "\nUsage: jobshop")) << help.output;
}

}  // namespace
