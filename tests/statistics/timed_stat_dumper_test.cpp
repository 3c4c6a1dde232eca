// Statistics files, on demand and on a timer.
#include "libvarrow/statistics/TimedStatDumper.h"

#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace libvarrow;
using test_support::readFile;
namespace fs = boost::filesystem;

class StatisticsFileTest : public test_support::InTemporaryDirectory {
 protected:
  StatisticsFileTest() : statistics("run") { ::unsetenv("LIBVARROW_TIMED_STAT_DUMP"); }
  ~StatisticsFileTest() override { ::unsetenv("LIBVARROW_TIMED_STAT_DUMP"); }

  StatisticsContainer statistics;
};

TEST_F(StatisticsFileTest, AFileIsWrittenWithItsFoldersAndNamed) {
  statistics.getCountStatistics("rows", 5);
  statistics.dumpToFile("a/b/stat.json");
  test_support::writeFile("a/b/stat.json", std::string(1000, 'x'));  // to be truncated
  const std::string real = statistics.dumpToFile("a/b/stat.json");
  EXPECT_EQ(directory.path().generic_string() + "/a/b/stat.json", real);
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile(real));
  EXPECT_EQ("{\n \"run\" : \n [\n  {\n   \"rows\" : 5\n  }\n ]\n}\n", readFile(real));
}

TEST_F(StatisticsFileTest, AFileThatCannotBeOpenedIsLoggedAndEndsTheProcess) {
  fs::create_directory("taken");
  const auto child = test_support::runInChild([&] { statistics.dumpToFile("taken"); });
  EXPECT_EQ(SIGABRT, child.signal);
  const std::string expected =
      " src_file:taken real_file:" + directory.path().generic_string() + "/taken\n";
  EXPECT_NE(std::string::npos, child.errors.find(expected)) << child.errors;
  EXPECT_NE(std::string::npos, child.errors.find("CommonStatistics::dumpToFile(const"));
  EXPECT_NE(std::string::npos, child.errors.find("Backtrace:"));
}

TEST_F(StatisticsFileTest, WithoutTheVariableADumperWritesOnceAtItsEnd) {
  {
    TimedStatDumper dumper(&statistics, "live/stat.json");
    EXPECT_EQ(5000, dumper.getStartInterval());
    EXPECT_EQ(30000, dumper.getPeriodicInterval());
    statistics.getCountStatistics("rows", 1);
    EXPECT_TRUE(fs::is_empty("."));
  }
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile("live/stat.json"));
  EXPECT_EQ(1, std::distance(fs::directory_iterator("live"), fs::directory_iterator()))
      << "no .writing file is left";
}

TEST_F(StatisticsFileTest, ADumperWritesBesideItsTargetFirst) {
  fs::create_directory("stat.json.writing");
  const auto blocked = test_support::runInChild([&] { TimedStatDumper(&statistics, "stat.json"); });
  EXPECT_EQ(SIGABRT, blocked.signal);
  EXPECT_NE(std::string::npos, blocked.errors.find("/stat.json.writing\n")) << blocked.errors;
  test_support::writeFile("full/inner", "");
  const auto unremovable = test_support::runInChild([&] { TimedStatDumper(&statistics, "full"); });
  EXPECT_EQ(SIGABRT, unremovable.signal);
  EXPECT_NE(std::string::npos, unremovable.errors.find("filesystem_error"));
}

TEST_F(StatisticsFileTest, AFullLengthTargetIsReplacedThoughItsTemporaryNameIsCut) {
  fs::create_directory("x");
  const std::string folder = (directory.path() / "x").generic_string() + "/";
  const std::string target = std::string(259 - folder.size(), 's');
  { TimedStatDumper dumper(&statistics, folder + target); }
  ASSERT_EQ(1, std::distance(fs::directory_iterator("x"), fs::directory_iterator()));
  EXPECT_EQ(target, fs::directory_iterator("x")->path().filename().string());
}

TEST_F(StatisticsFileTest, TheTargetIsFixedAtConstruction) {
  fs::create_directory("elsewhere");
  test_support::writeFile("stat.json", "old");
  {
    TimedStatDumper dumper(&statistics, "stat.json");
    fs::current_path("elsewhere");
  }
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile(directory.path() / "stat.json"));
}

TEST_F(StatisticsFileTest, WithTheVariableEvenEmptyATimerRewritesTheFile) {
  ::setenv("LIBVARROW_TIMED_STAT_DUMP", "", 1);
  CountStatistics* rows = statistics.getCountStatistics("rows");
  {
    TimedStatDumper dumper(&statistics, "stat.json");
    dumper.setStartInterval(1);
    dumper.setPeriodicInterval(5);
    dumper.restart(5);
    for (int i = 0; i < 2000 && !fs::exists("stat.json"); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_TRUE(fs::exists("stat.json"));
    rows->inc();
    ::unsetenv("LIBVARROW_TIMED_STAT_DUMP");
  }
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile("stat.json"));
  EXPECT_FALSE(fs::exists("stat.json.writing"));
}

}  // namespace
