// The start of a process.
#include "libvarrow/env/process_init.h"

#include <omp.h>

#include <boost/filesystem/operations.hpp>
#include <iostream>

#include "libvarrow/env/RunTimeEnv.h"
#include "support/support.h"

namespace {

using namespace libvarrow;

TEST(ProcessInitTest, OpenMpUsesOnlyAPartOfManyProcessors) {
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

TEST(RunTimeEnvTest, KeepsThePathsOfTheFirstUse) {
  const test_support::TemporaryDirectory directory;
  const auto child = test_support::runInChild([] {
    const auto path = boost::filesystem::current_path();
    RunTimeEnv::instance();
    boost::filesystem::current_path("/");
    const RunTimeEnv& env = RunTimeEnv::instance();
    std::cout << (env.runPath() == path) << (env.confPath() == path);
  });
  EXPECT_EQ("11", child.output);
}

}  // namespace
