// Rules that several threads count on, and singletons that they make.
#include <gtest/gtest.h>

#include <set>
#include <thread>
#include <vector>

#include "libvarrow/env/RunTimeEnv.h"
#include "libvarrow/statistics/ProgressStatistics.h"
#include "libvarrow/xrule/Rule.h"

namespace {

using namespace libvarrow;

constexpr int kThreads = 4;
constexpr int kChecks = 2000;

struct Even : Rule {
  bool validate(int value) { return count(value % 2 == 0); }
};

template <class Work>
void onThreads(Work work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) threads.emplace_back(work, i);
  for (std::thread& thread : threads) thread.join();
}

TEST(SharedRulesTest, CountersAreExactAndOneEnvironmentIsMade) {
  Even rule;
  SimpleProgressStatistics progress(kThreads * kChecks);
  std::vector<RunTimeEnv*> made(kThreads);
  onThreads([&](int thread) {
    made[static_cast<std::size_t>(thread)] = &RunTimeEnv::instance();
    EXPECT_FALSE(RunTimeEnv::instance().runPath().empty());
    for (int i = 0; i < kChecks; ++i) {
      rule.validate(i);
      progress.inc();
      EXPECT_LE(progress.getProcessPercent(), 100u);
    }
  });
  EXPECT_EQ(kThreads * kChecks / 2, rule.getPassedCountValue());
  EXPECT_EQ(kThreads * kChecks / 2, rule.getFailedCountValue());
  EXPECT_EQ(100u, progress.getProcessPercent());
  EXPECT_EQ(1u, std::set<RunTimeEnv*>(made.begin(), made.end()).size());
}

#if defined(_OPENMP)
TEST(SharedRulesTest, CountsFromOpenMpThreadsAreExact) {
  Even rule;
#pragma omp parallel for num_threads(kThreads)
  for (int i = 0; i < kChecks; ++i) rule.validate(i);
  EXPECT_EQ(kChecks / 2, rule.getPassedCountValue());
  EXPECT_EQ(kChecks / 2, rule.getFailedCountValue());
}
#endif

}  // namespace
