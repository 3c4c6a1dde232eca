// Processes that are killed while a timer writes the statistics.
#include <boost/filesystem/operations.hpp>
#include <chrono>
#include <iostream>
#include <random>

#include "libvarrow/statistics/TimedStatDumper.h"
#include "support/environment.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace test_support;
namespace fs = boost::filesystem;

constexpr const char* kFile = "run/stat.json";

class TimerProcessTest : public InTemporaryDirectory {
 protected:
  TimerProcessTest() { setVariable("LIBVARROW_TIMED_STAT_DUMP", "1"); }
  ~TimerProcessTest() override { unsetVariable("LIBVARROW_TIMED_STAT_DUMP"); }

  // Returns the signal that ended a process that only writes. It is killed after `life` of
  // processor time, so that a busy machine gives it as much time as an idle one.
  int killed(std::chrono::microseconds life) {
    const auto child = runInChild([&] {
      const auto end = processorTime() + life;
      TimedStatDumper dumper(&statistics_, kFile);
      dumper.restart(1);
      eventually([&] { return processorTime() >= end; });
      killThisProcess();
    });
    return child.signal;
  }

  StatisticsContainer statistics_{"run"};
  CountStatistics* rows_ = statistics_.getCountStatistics("rows");
};

TEST_F(TimerProcessTest, AKilledProcessLeavesACompleteFileOrNone) {
  constexpr int kKills = 250;
  constexpr unsigned kSeed = 20240305;
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<int> lifeUs(0, 40000);
  // One long text is rendered fast and written slowly.
  statistics_.getJsonStatistics("text", Json::Value(std::string(std::size_t{1} << 20, 'x')));
  statistics_.getCountStatistics("last", 1);
  int written = 0;
  for (int i = 1; i <= kKills; ++i) {
    rows_->inc();
    EXPECT_EQ(kKillSignal, killed(std::chrono::microseconds(lifeUs(random))));
    if (!fs::exists(kFile)) continue;
    Json::Value entries;
    ASSERT_NO_THROW(entries = File2Json(kFile)["run"]) << "kill " << i << ", seed " << kSeed;
    EXPECT_EQ(1, entries[2]["last"].asInt());
    written += entries[0]["rows"].asInt() == i ? 1 : 0;
  }
  std::cout << written << " of " << kKills << " processes wrote before they were killed\n";
  EXPECT_GT(written, kKills / 10);
}

}  // namespace
