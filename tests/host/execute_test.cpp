// Runs in the calling process.
#include "host/modules.h"
#include "host/program.h"

namespace host_test {
namespace {

using libvarrow::RunResult;

class Execute : public InTemporaryDirectory {
 protected:
  static libvarrow::RunOptions options(const std::string& folder = "run") {
    libvarrow::RunOptions made;
    made.pipeline = "p.json";
    made.folder = folder;
    made.overwrite = true;
    return made;
  }
};

TEST_F(Execute, EveryEndIsTold) {
  struct EndAfter : libvarrow::RunObserver {
    void stepEnds(libvarrow::Module&, libvarrow::ModuleData&) override { --steps; }
    bool isEndRequested() const noexcept override { return steps <= 0; }
    int steps = 1;
  } endAfterOne;
  const std::string late = act("report", "late");
  const std::string fails = act("throw", "no orders");
  struct Case {
    std::string modules;
    const char* until;
    libvarrow::RunObserver* observer;
    RunResult::End end;
    std::string step;
    std::string error;
    const char* outcome;
  };
  const Case cases[] = {
      {act("print"), "", nullptr, RunResult::End::Done, "", "", "done"},
      {late + ", " + fails, "0_Act", nullptr, RunResult::End::RulesBroken, "",
       "p.json: the plan breaks 1 rule: late", "rules broken"},
      {late + ", " + fails, "", nullptr, RunResult::End::Failed, "1_Act",
       "p.json:1:59: 1_Act: no orders", "failed"},
      {R"({"ChainedModule": {"modules": [)" + act("print") + ", " + fails + "]}}, " + fails,
       "0_ChainedModule/0_Act", nullptr, RunResult::End::Done, "", "", "done"},
      {act("print") + ", " + fails, "", &endAfterOne, RunResult::End::Ended, "",
       "p.json: ended after step 0_Act", "ended on request"},
      {act("fly"), "", nullptr, RunResult::End::Faulty, "",
       "p.json:1:30: modules[0].Act.how: ", ""},
      {"", "", nullptr, RunResult::End::Done, "", "", "done"}};
  libvarrow::Host host("orders", "");
  registerOrders(host);
  for (const Case& c : cases) {
    writePipeline(c.modules);
    libvarrow::RunOptions settings = options();
    settings.until = c.until;
    settings.observer = c.observer;
    Orders data;
    libvarrow::RunObserver own;
    libvarrow::StatisticsContainer container("own");
    data.setObserver(&own);
    data.statisticsContainer = &container;
    const RunResult result = host.execute(settings, data);
    EXPECT_EQ(c.end, result.end) << result.error;
    EXPECT_EQ(c.step, result.step);
    EXPECT_EQ(0u, result.error.find(c.error)) << result.error;
    EXPECT_EQ(c.error.empty(), result.error.empty()) << result.error;
    EXPECT_TRUE(data.observer() == &own && data.statisticsContainer == &container);
    if (c.end == RunResult::End::Faulty) {
      EXPECT_EQ("", result.folder);
    } else {
      EXPECT_EQ(c.outcome, outcome("run"));
      libvarrow::File2Json("run/statistics.json");
    }
  }
}

TEST_F(Execute, ReasonsHaveTheEncodingOfTheSystem) {
  const std::string text = libvarrow::utility::fromUtf8("计é");
  const std::string missing = libvarrow::utility::pathFromUtf8("计é.json") + "]";
  const std::pair<std::string, std::string> cases[] = {
      {act("throw", "计é"), "0_Act: " + text},
      {act("throw a text of the system", "计é"), "0_Act: " + text},
      {act("report", "计é"), "breaks 1 rule: " + text},
      {act("break", "计é"), "breaks 1 rule: " + text},
      {R"({"Act": {"how": "print", "计é": 1}})", "unknown json key:[" + text + "]"},
      {R"({"Receive": {"lots": {"计é": 0.5}}})", "lots." + text + ": "},
      {R"({"Receive": {"rules": "计é.json"}})", missing}};
  libvarrow::Host host("orders", "");
  registerOrders(host);
  for (const auto& [module, reason] : cases) {
    writePipeline(module);
    Orders data;
    const RunResult result = host.execute(options(), data);
    EXPECT_TRUE(contains(result.error, reason)) << result.error << " has no " << reason;
    for (const auto& [file, faults] : result.faults) {
      // Code page 1252 lacks a character of the missing file's name.
      EXPECT_TRUE(reason == missing || contains(faults.first.front().text(), "计é")) << file;
    }
    if (result.end == RunResult::End::Faulty) continue;
    const Json::Value recorded = libvarrow::File2Json("run/run.json")["error"];
    EXPECT_TRUE(contains(recorded.asString(), libvarrow::utility::toUtf8(text))) << recorded;
  }
}

TEST_F(Execute, WithFewerDumpsTheDataIsDumpedAfterAFailure) {
  libvarrow::Host host("orders", "");
  registerOrders(host);
  writePipeline(act("throw", "no orders"));
  const std::pair<libvarrow::DumpLevel, std::pair<bool, bool>> cases[] = {
      {libvarrow::DumpLevel::All, {true, false}},
      {libvarrow::DumpLevel::Brief, {true, true}},
      {libvarrow::DumpLevel::None, {false, true}}};
  for (const auto& [level, exist] : cases) {
    libvarrow::RunOptions settings = options();
    settings.dumps = level;
    Orders data;
    host.execute(settings, data);
    EXPECT_EQ(exist, std::pair(fs::exists(data.dumpPath + "in_info.json"),
                               fs::exists(data.dumpPath + "failed_info.json")));
  }
}

TEST_F(Execute, HostsOfOneNameMayFollowEachOther) {
  writePipeline(act("print"));
  for (int i = 0; i < 2; ++i) {
    libvarrow::Host host("orders", "");
    registerOrders(host);
    Orders data;
    EXPECT_EQ(RunResult::End::Done, host.execute(options(), data).end);
    EXPECT_EQ("another host has the register orders.modules",
              errorOf([] { libvarrow::Host("orders", ""); }));
    EXPECT_EQ("another host has the register orders.rules",
              errorOf([] { libvarrow::Host("other", "", "", "orders.rules"); }));
    libvarrow::Host other("other", "");
  }
}

TEST_F(Execute, ThreadsRunPipelinesAtTheSameTime) {
  writeFile("in.txt", "7");
  writeFile("rules.json", R"({"Late": {"limit": 1}})");
  writePipeline(R"({"Receive": {"file": "in.txt", "rules": "rules.json"}}, )" +
                act("write", "o.txt"));
  libvarrow::Host host("orders", "");
  registerOrders(host);
  std::vector<std::thread> threads;
  std::vector<std::string> errors(4, "not run");
  for (std::size_t i = 0; i < errors.size(); ++i) {
    threads.emplace_back([&, i] {
      libvarrow::useCrashStack();
      libvarrow::RunOptions settings = options(std::to_string(i));
      settings.set = {"Receive.count=" + std::to_string(i + 1)};
      Orders data;
      errors[i] = host.execute(settings, data).error;
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < errors.size(); ++i) {
    const std::string folder = (fs::canonical(".") / std::to_string(i)).generic_string();
    EXPECT_EQ("", errors[i]);
    EXPECT_EQ(folder + "/dump/1_Act/", readFile(folder + "/o.txt"));
    const Json::Value input = libvarrow::File2Json(folder + "/run.json")["inputs"][0];
    EXPECT_EQ(fs::canonical("in.txt").generic_string(), input["file"].asString());
    EXPECT_EQ("7902699be42c8a8e46fbbb4501726517e86b22c56a189f7625a6da49081b2451",
              input["sha256"].asString());
  }
}

}  // namespace
}  // namespace host_test
