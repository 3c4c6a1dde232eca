// Observed runs: order of calls, dump levels, ends on request.
#include "libvarrow/module/RunObserver.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>
#include <memory>

#include "libvarrow/module/ChainedModule.h"
#include "module/recording.h"
#include "support/support.h"

namespace module_test {

using namespace libvarrow;
using namespace test_support;

// Adds its calls to those of the data.
struct Listener : RunObserver {
  static void add(const char* event, Module& step, ModuleData& data) {
    static_cast<RecordingData&>(data).calls.push_back(event + step.getModuleName());
  }
  void stepBegins(Module& step, ModuleData& data) override {
    if (throwsAtBegin) throw std::runtime_error("not now");
    add("begins ", step, data);
  }
  void stepEnds(Module& step, ModuleData& data) override { add("ends ", step, data); }
  void stepFails(Module& step, ModuleData& data) noexcept override { add("fails ", step, data); }
  DumpLevel dumpLevel() const override { return level; }
  bool isEndRequested() const noexcept override { return endsNow; }

  DumpLevel level = DumpLevel::All;
  bool throwsAtBegin = false;
  bool endsNow = false;
};

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

TEST_F(RunObserverTest, AStepBeginsBeforeItsDumpsAndEndsAfterThem) {
  Worker alone("A");
  alone.process(&data);
  const std::vector<std::string> expected = {
      "begins A",  "detail run/in_detail.txt",  "debug run/before_process/",
      "work run/", "detail run/out_detail.txt", "debug run/after_process/",
      "ends A"};
  EXPECT_EQ(expected, data.calls);
}

TEST_F(RunObserverTest, TheLevelSelectsTheFilesOfAStep) {
  listener.level = DumpLevel::Brief;
  first->setAutoChangeCurrentDirToDumpPath(true);  // needs its directory at each level
  EXPECT_EQ(8u, run().size());                     // begins, work and ends, without dumps
  EXPECT_TRUE(boost::filesystem::exists("run/0_A/out_info.json"));
  EXPECT_FALSE(boost::filesystem::exists("run/0_A/module_stat.json"));
  boost::filesystem::remove_all("run");
  listener.level = DumpLevel::None;
  run();
  EXPECT_TRUE(boost::filesystem::is_empty("run/0_A"));
  EXPECT_FALSE(boost::filesystem::exists("run/1_B"));
}

TEST_F(RunObserverTest, AnExceptionIsToldForEachStepThatItLeaves) {
  listener.level = DumpLevel::None;
  second->action = [](ModuleData&) { throw std::runtime_error("late"); };
  EXPECT_EQ("late", errorOf([&] { run(); }));
  const std::vector<std::string> ends(data.calls.end() - 2, data.calls.end());
  EXPECT_EQ((std::vector<std::string>{"fails B", "fails libvarrow::ChainedModule"}), ends);
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
