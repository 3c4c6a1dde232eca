// Memory and file descriptors of a host that runs its pipeline for days.
#include "libvarrow/libvarrow.h"
#include "support/environment.h"
#include "support/support.h"

namespace {

using namespace libvarrow;

class Step : public Module {
 public:
  void processImp(ModuleData* data) override {
    const TimeRecoderHelper time(data->statisticsContainer->getTimeStatistics(""));
    data->statisticsContainer->getCountStatistics("steps")->inc();
    LIBVARROW_LOG_DEBUG("step in %s", data->dumpPath.c_str());
  }
};

class MemoryTest : public test_support::InTemporaryDirectory {};

TEST_F(MemoryTest, APipelineKeepsNoMemoryOrFilesAfterARun) {
  cppbind::ClassRegister classes;
  classes.regClass<ChainedModule>("ChainedModule");
  classes.regClass<Step>("Step");
  std::string chain = R"({"Step": {}})";
  for (int level = 0; level < 3; ++level) {  // 27 steps
    chain = R"({"ChainedModule": {"modules": [)" + chain + "," + chain + "," + chain + "]}}";
  }
  test_support::writeFile("pipeline.json", R"({"modules": [)" + chain + "]}");
  const ModuleExecutor executor(&classes, "pipeline.json", false);

  const auto run = [&](std::size_t times) {
    for (std::size_t i = 0; i < times; ++i) {
      StatisticsContainer statistics("run");
      ModuleData data;
      data.statisticsContainer = &statistics;
      data.dumpPath = "run/";
      executor.process(&data);
      TimedStatDumper(&statistics, "run/statistics.json");
    }
  };
  run(100);
  const std::size_t heap = test_support::heapBytes();
  const std::size_t files = test_support::openObjects();
  constexpr std::size_t kMoreRuns = 900;
  run(kMoreRuns);
  // The smallest block has 16 bytes, so no run leaks one.
  EXPECT_LT(test_support::heapBytes(), heap + 16 * kMoreRuns);
  EXPECT_EQ(files, test_support::openObjects());
}

}  // namespace
