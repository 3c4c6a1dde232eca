// The start of a process.
#include "libvarrow/env/process_init.h"

#include <omp.h>

#include <array>
#include <atomic>
#include <boost/filesystem/operations.hpp>
#include <iostream>
#include <thread>

#include "libvarrow/env/RunTimeEnv.h"
#include "support/support.h"

namespace {

using namespace libvarrow;

TEST(ProcessInitTest, OpenMpLeavesAPartOfTheProcessors) {
  const std::pair<int, unsigned> cases[] = {{1, 1},    {8, 8},    {10, 9},  {16, 15},
                                            {100, 90}, {101, 51}, {128, 64}};
  for (const auto& [processors, threads] : cases) {
    EXPECT_EQ(threads, openMPThreadCount(processors)) << processors;
  }
}

TEST(ProcessInitTest, OneCallInstallsTheErrorHandlerAndSetsTheThreadCount) {
  const auto child = test_support::runInChild([] {
    omp_set_num_threads(7);
    porcessCommonInit();
    std::cout << omp_get_max_threads();
  });
  const int processors = omp_get_num_procs();
  const std::string cores = std::to_string(processors);
  const std::string threads = std::to_string(openMPThreadCount(processors));
  EXPECT_EQ("init backtrace\nphysical_cores=" + cores +
                "\nreset openmp parallel threads number from:" + cores + " to " + threads + "\n" +
                threads,
            child.output);
}

TEST(RunTimeEnvTest, ThreadsThatAskAtOnceGetTheSameWithThePathsOfTheFirstUse) {
  const test_support::TemporaryDirectory directory;
  for (int i = 0; i < 100; ++i) {  // without the lock, some of them make two
    const auto child = test_support::runInChild([&] {
      std::atomic<int> waiting{2};
      std::array<RunTimeEnv*, 2> made{};
      const auto make = [&](std::size_t thread) {
        --waiting;
        while (waiting > 0) continue;
        made[thread] = &RunTimeEnv::instance();
      };
      std::thread other(make, 1);
      make(0);
      other.join();
      boost::filesystem::current_path("/");
      const RunTimeEnv& env = RunTimeEnv::instance();
      std::cout << (made[0] == &env) << (made[1] == &env) << (env.runPath() == directory.path())
                << (env.confPath() == directory.path());
    });
    ASSERT_EQ("1111", child.output);
  }
}

}  // namespace
