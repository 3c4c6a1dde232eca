// Statistics that several threads update while another renders.
#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>
#include <vector>

#include "libvarrow/json/json.h"
#include "libvarrow/statistics/TimedStatDumper.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace libvarrow;

constexpr int kThreads = 4;
constexpr int kUpdates = 3000;

TEST(SharedStatisticsTest, TotalsAreExactWhileATimerWritesTheTreeAndOneThreadMerges) {
  const test_support::TemporaryDirectory directory;
  ::setenv("LIBVARROW_TIMED_STAT_DUMP", "1", 1);
  StatisticsContainer root("root");
  CountStatistics* count = root.getCountStatistics("count");
  auto* numbers = new NumStatistics(10);
  root.addStat("numbers", numbers);
  DistributionStatistics* distribution = root.getDistributionStatistics("distribution");
  DistributionStatistics merged;
  TimeStatistics* times = root.getTimeStatistics("times");
  const auto update = [&](int thread) {
    for (int n = 0; n < kUpdates; ++n) {
      count->inc();
      numbers->add(thread * 10);
      distribution->inc("key" + std::to_string(thread), 2);
      if (thread == 0) merged.merge(distribution);
      EXPECT_LE(merged.get().size(), 4u);
      EXPECT_LE(distribution->getCountSum(), 24000u);
      if (n % 125 == 0) {
        times->appendCurrentLocalTime();
        root.getStatisticsContainer("child")->getCountStatistics("n")->inc();
      }
    }
  };
  {
    TimedStatDumper dumper(&root, "stat.json");
    dumper.restart(2);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) threads.emplace_back(update, i);
    for (std::thread& thread : threads) thread.join();
  }
  ::unsetenv("LIBVARROW_TIMED_STAT_DUMP");
  const Json::Value entries = File2Json("stat.json")["root"];
  EXPECT_EQ(12000, entries[0]["count"].asInt());
  EXPECT_EQ(12000, entries[1]["numbers"]["count"].asInt());
  EXPECT_EQ("3000,   25.00%", entries[1]["numbers"]["[300-310)"].asString());
  EXPECT_EQ(24000, entries[2]["distribution"]["__sum__"].asInt());
}

#if defined(_OPENMP)
TEST(SharedStatisticsTest, CountsFromOpenMpThreadsAreExact) {
  CountStatistics count;
#pragma omp parallel for num_threads(kThreads)
  for (int i = 0; i < kUpdates; ++i) count.inc(2);
  EXPECT_EQ(2 * kUpdates, count.toJsonValue4Bind().asInt());
}
#endif

}  // namespace
