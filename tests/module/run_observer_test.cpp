// Observed runs: without dumps, ends on request.
#include "libvarrow/module/RunObserver.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>
#include <memory>

#include "libvarrow/module/ChainedModule.h"
#include "libvarrow/module/TraceSpan.h"
#include "libvarrow/module/run_files.h"
#include "module/recording.h"
#include "support/support.h"

namespace module_test {

using namespace libvarrow;
using namespace test_support;

class RunObserverTest : public InTemporaryDirectory {
 protected:
  RunObserverTest() {
    data.dumpPath = "run/";
    data.setObserver(&listener);
    for (const auto& module : {first, second}) chain.addModule(module);
  }
  std::vector<std::string> run() {
    data.calls.clear();
    chain.process(&data);
    return data.calls;
  }

  Listener listener;
  RecordingData data;
  boost::shared_ptr<Worker> first = boost::make_shared<Worker>("A");
  boost::shared_ptr<Worker> second = boost::make_shared<Worker>("B");
  ChainedModule chain;
};

TEST_F(RunObserverTest, WithoutDumpsAStepMakesADirectoryOnlyToWorkInIt) {
  listener.level = DumpLevel::None;
  first->setAutoChangeCurrentDirToDumpPath(true);
  EXPECT_EQ(8u, run().size());  // begins, work and ends
  EXPECT_TRUE(boost::filesystem::is_empty("run/0_A"));
  EXPECT_FALSE(boost::filesystem::exists("run/1_B"));
}

TEST_F(RunObserverTest, AStepThatDoesNotBeginNeitherEndsNorFails) {
  listener.throwsAtBegin = true;
  EXPECT_EQ("not now", errorOf([&] { run(); }));
  EXPECT_TRUE(data.calls.empty());
}

TEST_F(RunObserverTest, ARunEndsBetweenStepsOrWhereAModuleAsks) {
  listener.level = DumpLevel::None;
  first->action = [&](ModuleData&) { listener.endsNow = true; };
  EXPECT_THROW(run(), RunEnded);
  EXPECT_EQ(1u, data.workPaths.size());
  EXPECT_THROW(throwIfEndRequested(data), RunEnded);
  EXPECT_EQ("ends A", data.calls[data.calls.size() - 2]);
}

TEST_F(RunObserverTest, SkippedStepsLeaveNoTraceAndKeepTheNamesOfTheOthers) {
  listener.skipped = "run/0_A/";
  EXPECT_EQ("begins B", run()[3]);
  EXPECT_EQ((std::vector<std::string>{"run/1_B/"}), data.workPaths);
  EXPECT_EQ("run/", data.dumpPath);
  EXPECT_FALSE(boost::filesystem::exists("run/0_A"));
}

TEST_F(RunObserverTest, SpansAndKeptRulesReachTheObserver) {
  listener.level = DumpLevel::None;
  first->action = [](ModuleData& own) {
    const TraceSpan outer(own, "outer");
    reportRuleKept(own, "in time");
    const TraceSpan inner(own, std::string("in") + "ner");
  };
  run();
  EXPECT_EQ((std::vector<std::string>{"in time", "inner", "outer"}), listener.told);
  RecordingData alone;
  first->action(alone);
  EXPECT_EQ("this kind of data has no restore4Debug",
            errorOf([&] { alone.restore4Debug("run/"); }));
}

TEST_F(RunObserverTest, ACopyOfTheDataIsNotObserved) {
  RecordingData copy(data);
  listener.endsNow = true;
  EXPECT_FALSE(isEndRequested(copy));
  RecordingData assigned;
  assigned.setObserver(&listener);
  assigned = copy;
  EXPECT_TRUE(isEndRequested(assigned));
  EXPECT_EQ("run/", assigned.dumpPath);
}

}  // namespace module_test
