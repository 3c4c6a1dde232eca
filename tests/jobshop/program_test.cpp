// The program, run as a process.
#include <libvarrow/json/json.h>

#include <boost/algorithm/string/erase.hpp>
#include <boost/filesystem/operations.hpp>

#include "support/environment.h"
#include "support/support.h"

namespace fs = boost::filesystem;
using namespace test_support;

namespace {

const std::string kPipeline = JOBSHOP_FOLDER "/pipeline.json";

/// Runs a pipeline in the folder "run", which replaces an earlier run.
ChildResult jobshopRun(const std::string& pipeline, const std::vector<std::string>& more = {}) {
  std::vector<std::string> line{JOBSHOP_PROGRAM, "run", pipeline, "--out", "run", "--overwrite"};
  line.insert(line.end(), more.begin(), more.end());
  return runProgram(line);
}

Json::Value schedule() {
  return libvarrow::File2Json("run/schedule.json");
}

class Program : public InTemporaryDirectory {};

TEST_F(Program, FindsTheOptimumOfBothInstancesAndOfItsDumps) {
  const std::pair<std::string, std::string> cases[] = {{"ft06", "55"}, {"la01", "666"}};
  for (const auto& [name, optimum] : cases) {
    const ChildResult run =
        jobshopRun(kPipeline, {"--instance", JOBSHOP_FOLDER "/data/" + name + ".txt"});
    EXPECT_EQ("", run.errors);
    EXPECT_EQ(0u, run.output.find("instance    " + name + ", ")) << run.output;
    EXPECT_TRUE(contains(run.output, "makespan    " + optimum)) << run.output;
    const Json::Value found = schedule();
    EXPECT_EQ(optimum, found["makespan"].asString());
    for (const char* file : {"run/schedule.csv", "run/gantt.svg", "run/dump/3_WriteSchedule"}) {
      EXPECT_TRUE(fs::exists(file)) << file;
    }
    EXPECT_TRUE(contains(readFile("run/statistics.json"), "\"tries\" : \"500/500;100%\""));
    fs::rename("run/dump/0_ReadInstance/after_process/instance.txt", "dumped.txt");
    EXPECT_EQ(0, jobshopRun(kPipeline, {"--instance", "dumped.txt"}).exitCode);
    EXPECT_EQ(found["jobs"], schedule()["jobs"]);
  }
}

TEST_F(Program, PlansInShiftsKeepsTheRulesAndDumpsTheCalendar) {
  const ChildResult run = jobshopRun(JOBSHOP_FOLDER "/pipeline_shifts.json");
  ASSERT_EQ(0, run.exitCode) << run.errors;
  EXPECT_TRUE(contains(run.output, "clock        2024-03-01 06:00:00 to 2024-03-0"));
  EXPECT_TRUE(contains(run.output, "rules        all 4 kept\n")) << run.output;
  EXPECT_TRUE(contains(readFile("run/dump/1_SetCalendars/out_detail.txt"),
                       "machine 3 in the first week, efficiency 0.8\n"
                       "  [2024-03-01 06:00:00,2024-03-01 10:00:00]:04:00:00\n"));
}

// Each run is repeated in another folder, locale and time zone, with another number of threads.
TEST_F(Program, EveryPipelineRepeatsItsRun) {
  struct Environment {
    Environment() {
      setVariable("LC_ALL", "de_DE.UTF-8");
      setVariable("TZ", "Asia/Tokyo");
      setVariable("OMP_NUM_THREADS", "3");
    }
    ~Environment() {
      for (const char* const name : {"LC_ALL", "TZ", "OMP_NUM_THREADS"}) unsetVariable(name);
    }
  };
  fs::create_directories("other/folder");
  for (const std::string name : {"pipeline", "pipeline_shifts", "pipeline_late"}) {
    const int status = jobshopRun(JOBSHOP_FOLDER "/" + name + ".json").exitCode;
    EXPECT_TRUE(status == 0 || status == 3) << name;
    const Environment environment;
    const std::string run = fs::absolute("run").string();
    const fs::path before = fs::current_path();
    fs::current_path("other/folder");
    const ChildResult repeated = runProgram({JOBSHOP_PROGRAM, "repeat", run});
    fs::current_path(before);
    EXPECT_EQ(0, repeated.exitCode) << name << repeated.output << repeated.errors;
    EXPECT_TRUE(contains(repeated.output, "\nno difference in ")) << repeated.output;
  }
  jobshopRun(kPipeline, {"--set", "modules[1].ChainedModule.modules[4].Dispatch.seed=2"});
  fs::rename("run", "second");
  jobshopRun(kPipeline);
  EXPECT_TRUE(
      contains(runProgram({JOBSHOP_PROGRAM, "diff", "run", "second"}).output,
               "\npipeline: modules[1].ChainedModule.modules[4].Dispatch.seed\n- 1\n+ 2\n"));
}

TEST_F(Program, ThePipelineSelectsTheModulesAndTheirOutput) {
  writeFile("shop/data/my.txt", readFile(JOBSHOP_FOLDER "/data/ft06.txt"));
  writeFile("shop/p.json", R"({"modules": [
      {"ReadInstance": {"file": "data/my.txt"}}, {"Dispatch": {"rule": "MWKR"}},
      {"Dispatch": {"rule": "SPT", "keep_best": false}},
      {"WriteSchedule": {"json": "deep/plan.json", "csv": "",
                         "start": "2024-03-05 06:00:00", "time_unit": "00:30:00"}}]})");
  jobshopRun("shop/p.json");
  const Json::Value plan = libvarrow::File2Json("run/deep/plan.json");
  EXPECT_EQ("SPT", plan["origin"].asString());
  EXPECT_EQ("2024-03-05 07:30:00", plan["jobs"][5][0]["end_clock"].asString());
  EXPECT_FALSE(fs::exists("run/schedule.csv"));
}

TEST_F(Program, TellsAllFaultsOfItsFilesBeforeTheRun) {
  writeFile("shop/p.json", R"({"modules": [
  {"No\npe%s%n\u001b[31m": {}},
  {"ReadInstance": {"fiel": "ft06.txt"}},
  {"Dispach": {"rule": "SPT"}},
  {"Dispatch": {"rule": "EDD", "tries": 0, "noise": "much", "seed": -1, "speed": 2}},
  {"SetCalendars": {
    "start": "tomorrow", "days": 1.5, "efficiency": 0,
    "shifts": [{"from": "24:00:00", "to": "25:00:00"}, {"from": "06:00:00", "days": ["Mon"]}],
    "closed": {}}},
  {"SetCalendars": {"start": "2024-03-01", "machines": [{"machine": 1}, {"machine": 1}]}},
  {"CHAINEDMODULE": {"modules": [{"CheckSchedule": {}, "WriteSchedule": {}}]}},
  {"DrawGantt": {"file": "a.svg", "file": "b.svg"}},
  {"checkrules": {"file": "rules.json"}}
]})");
  writeFile("shop/rules.json", R"([
  {"MaxWait": {"limit": -1}}, {"rule_level": "2"}, {"rule_list": {}}
])");
  const ChildResult run = jobshopRun("shop/p.json");
  EXPECT_EQ(1, run.exitCode);
  EXPECT_EQ(R"(
shop/p.json:2:4: error: modules[0]: No pe%s%n [31m miss register
shop/p.json:3:21: error: modules[1].ReadInstance.file: not found; did you mean "file"?
shop/p.json:4:4: error: modules[2]: Dispach miss register; did you mean "Dispatch"?
shop/p.json:5:25: error: modules[3].Dispatch.rule: "EDD" is not one of "SPT", "LPT", "MWKR", "MOPNR", "FIFO"
shop/p.json:5:41: error: modules[3].Dispatch.tries: 0 is less than 1
shop/p.json:5:53: error: modules[3].Dispatch.noise: Value is not convertible to double.
shop/p.json:5:69: error: modules[3].Dispatch.seed: LargestInt out of UInt64 range
shop/p.json:5:73: error: modules[3].Dispatch: unknown json key:[speed]
shop/p.json:7:14: error: modules[4].SetCalendars.start: cant not parse [tomorrow] as time
shop/p.json:7:34: error: modules[4].SetCalendars.days: Value is not convertible to Int.
shop/p.json:7:53: error: modules[4].SetCalendars.efficiency: 0 is less than 0.001
shop/p.json:8:25: error: modules[4].SetCalendars.shifts[0].from: "24:00:00" is more than "23:59:59"
shop/p.json:8:56: error: modules[4].SetCalendars.shifts[1].to: not found
shop/p.json:8:86: error: modules[4].SetCalendars.shifts[1].days[0]: "Mon" is not one of "mon", "tue", "wed", "thu", "fri", "sat", "sun"
shop/p.json:9:15: error: modules[4].SetCalendars.closed: should be a list
shop/p.json:10:30: warning: modules[5].SetCalendars.start: means "2024-03-01 00:00:00"
shop/p.json:10:85: error: modules[5].SetCalendars.machines[1].machine: machine 1 already has hours
shop/p.json:11:34: error: modules[6].CHAINEDMODULE.modules[0]: DynamicType object must have a unique key as it's type
shop/p.json:12:35: warning: modules[7].DrawGantt.file: the key is given twice; the last one counts
shop/rules.json:2:25: error: [0].MaxWait.limit: -1 is less than 0
shop/rules.json:2:46: error: [1].rule_level: should be an integer
shop/rules.json:2:66: error: [2].rule_list: should be a list
jobshop: shop/p.json:2:4: modules[0]: No pe%s%n [31m miss register; and 19 more errors
)",
            '\n' + boost::erase_all_copy(run.errors, directory.path().generic_string() + "/"));
  EXPECT_FALSE(fs::exists("run"));
}

TEST_F(Program, TheLastLineOfARunThatFailsTellsTheStepAndWhy) {
  struct Case {
    const char* modules;
    int status;
    std::string lastLine;
  };
  const std::string folder = directory.path().generic_string();
  const Case cases[] = {
      {R"({"ChainedModule": {"modules": [{"ReadInstance": {"file": "bad.txt"}}]}})", 1,
       ":1:46: 0_ChainedModule/0_ReadInstance: " + folder +
           "/bad.txt:2: expected a time from 0 to 1000000000, found \"x\""},
      {R"({"ReadInstance": {"file": "one.txt"}}, {"WriteSchedule": {}})", 1,
       ":1:54: 1_WriteSchedule: no schedule: Dispatch must run before this module"},
      {R"({"ReadInstance": {"file": "one.txt"}}, {"Dispatch": {"rule": "SPT"}},
          {"DrawGantt": {"file": "run.json/gantt.svg"}})",
       1, ":2:12: 2_DrawGantt: cannot write " + folder + "/run/run.json/gantt.svg"},
      {R"({"ReadInstance": {"file": "one.txt"}}, {"Dispatch": {"rule": "SPT"}},
          {"CheckRules": {"file": "rules.json"}}, {"DrawGantt": {}})",
       3, ": the plan breaks 1 rule: LatestFinish: job 0 ends at 5, 1 after 4"}};
  writeFile("bad.txt", "1 1\n0 x\n");
  writeFile("one.txt", "1 1\n0 5\n");
  writeFile("rules.json", R"({"LatestFinish": {"limit": 4}})");
  for (const auto& [modules, status, lastLine] : cases) {
    writeFile("p.json", "{\"modules\": [" + std::string(modules) + "]}");
    const ChildResult run = jobshopRun("p.json");
    EXPECT_EQ(status, run.exitCode);
    EXPECT_EQ("jobshop: p.json" + lastLine + "\n", run.errors);
  }
  EXPECT_FALSE(fs::exists("run/gantt.svg")) << "a broken rule ends the run";
  EXPECT_TRUE(fs::exists("run/rule_report.txt"));
}

}  // namespace
