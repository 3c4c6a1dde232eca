// Statistics that several threads update while another renders.
#include <gtest/gtest.h>

#include <atomic>
#include <boost/filesystem/operations.hpp>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

#include "libvarrow/json/json.h"
#include "libvarrow/statistics/TimedStatDumper.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace libvarrow;

constexpr int kThreads = 4;
constexpr int kUpdates = 3000;

void onAllThreads(const std::function<void(int)>& update) {
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&update, i] {
      for (int n = 0; n < kUpdates; ++n) update(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

class SharedStatisticsTest : public test_support::InTemporaryDirectory {};

TEST_F(SharedStatisticsTest, TotalsAreExactWhileATimerWritesTheTree) {
  ::setenv("LIBVARROW_TIMED_STAT_DUMP", "1", 1);
  StatisticsContainer root("root");
  CountStatistics* count = root.getCountStatistics("count");
  PercentStatistics* percent = root.getPercentStatistics("percent", kThreads * kUpdates);
  auto* numbers = new NumStatistics(10);
  root.addStat("numbers", numbers);
  DistributionStatistics* distribution = root.getDistributionStatistics("distribution");
  TimeStatistics* times = root.getTimeStatistics("times");
  {
    TimedStatDumper dumper(&root, "stat.json");
    dumper.restart(2);
    onAllThreads([&](int thread) {
      count->inc();
      percent->inc();
      numbers->add(thread * 10);
      distribution->inc("key" + std::to_string(thread), 2);
      if (count->toJsonValue4Bind().asInt64() % 500 == 0) {
        times->appendCurrentLocalTime();
        root.getStatisticsContainer("child")->getCountStatistics("n")->inc();
      }
    });
  }
  ::unsetenv("LIBVARROW_TIMED_STAT_DUMP");
  const Json::Value entries = File2Json("stat.json")["root"];
  EXPECT_EQ(kThreads * kUpdates, entries[0]["count"].asInt());
  EXPECT_EQ("12000/12000;100%", entries[1]["percent"].asString());
  EXPECT_EQ(kThreads * kUpdates, entries[2]["numbers"]["count"].asInt());
  EXPECT_EQ("3000,   25.00%", entries[2]["numbers"]["[300-310)"].asString());
  EXPECT_EQ(2 * kThreads * kUpdates, entries[3]["distribution"]["__sum__"].asInt());
}

TEST_F(SharedStatisticsTest, ADistributionCanBeMergedWhileItsSourceGrows) {
  DistributionStatistics from;
  DistributionStatistics to;
  std::atomic<bool> done{false};
  std::thread reader([&] {
    while (!done) static_cast<void>(to.getCountSum() + from.get().size());
  });
  onAllThreads([&](int thread) {
    from.inc("a", 1);
    if (thread == 0) to.merge(&from);
  });
  done = true;
  reader.join();
  EXPECT_EQ(static_cast<std::uint64_t>(kThreads * kUpdates), from.getCountSum());
}

#if defined(_OPENMP)
TEST_F(SharedStatisticsTest, CountsFromOpenMpThreadsAreExact) {
  CountStatistics count;
  DistributionStatistics distribution;
#pragma omp parallel for num_threads(kThreads)
  for (int i = 0; i < kThreads * kUpdates; ++i) {
    count.inc(2);
    distribution.inc(i % 2 == 0 ? "even" : "odd", 1);
  }
  EXPECT_EQ(2 * kThreads * kUpdates, count.toJsonValue4Bind().asInt());
  EXPECT_EQ(static_cast<std::uint64_t>(kThreads * kUpdates / 2), distribution.get().at("odd"));
}
#endif

}  // namespace
