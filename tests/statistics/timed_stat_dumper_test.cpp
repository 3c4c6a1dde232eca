// Statistics files, on demand and on a timer.
#include "libvarrow/statistics/TimedStatDumper.h"

#include <sys/resource.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <cstdlib>
#include <memory>
#include <vector>

#include "libvarrow/backtrace/BackTrace.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace test_support;
namespace fs = boost::filesystem;

class StatisticsFileTest : public InTemporaryDirectory {
 protected:
  StatisticsFileTest() { ::unsetenv("LIBVARROW_TIMED_STAT_DUMP"); }

  StatisticsContainer statistics{"run"};
  const testing::KilledBySignal aborted{SIGABRT};
};

TEST_F(StatisticsFileTest, WithoutTheVariableTheDestructorReplacesTheFile) {
  fs::create_directory("elsewhere");
  writeFile("live/stat.json", "old");
  {
    TimedStatDumper dumper(&statistics, "live/stat.json");
    EXPECT_EQ(5000, dumper.getStartInterval());
    EXPECT_EQ(30000, dumper.getPeriodicInterval());
    statistics.getCountStatistics("rows", 1);
    EXPECT_EQ("old", readFile("live/stat.json"));
    fs::remove_all("live");  // created again
    fs::current_path("elsewhere");
  }
  fs::current_path("../live");
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile("stat.json"));
  EXPECT_FALSE(fs::exists("stat.json.writing"));
}

TEST_F(StatisticsFileTest, ADumperFirstWritesATemporaryFile) {
  writeFile("other", "as it was");
  fs::create_symlink("other", "stat.json.writing");
  { TimedStatDumper dumper(&statistics, "stat.json"); }
  EXPECT_EQ("as it was", readFile("other")) << "links are not followed";
  EXPECT_FALSE(fs::is_symlink("stat.json"));
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile("stat.json"));
  writeFile("stat.json.writing/inner", "");
  EXPECT_EXIT(TimedStatDumper(&statistics, "stat.json"), aborted, "/stat\\.json\\.writing\n");
  writeFile("full/inner", "");
  EXPECT_EXIT(TimedStatDumper(&statistics, "full"), aborted, "filesystem_error");
}

TEST_F(StatisticsFileTest, AnIncompleteFileDoesNotReplaceACompleteOne) {
  const auto child = runInChild([&] {
    init_error_handler(false);  // else the first write beyond the limit ends the process
    const rlimit limit{20000, 20000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    { const TimedStatDumper dumper(&statistics, "stat.json"); }
    statistics.getJsonStatistics("big", Json::Value(std::string(100000, 'x')));
    { const TimedStatDumper dumper(&statistics, "stat.json"); }
    // dumpToFile does not report it, and returns the name.
    EXPECT_EQ(fs::absolute("other").string(), statistics.dumpToFile("other"));
    ::_exit(HasFailure() ? 1 : 0);
  });
  EXPECT_EQ(0, child.exitCode) << child.output << child.errors;
  EXPECT_TRUE(contains(child.errors, "/stat.json.writing could not be written completely; "));
  EXPECT_EQ("{\n \"run\" : []\n}\n", readFile("stat.json"));
  EXPECT_FALSE(fs::exists("stat.json.writing"));
  EXPECT_EQ(20000u, fs::file_size("other"));
}

TEST_F(StatisticsFileTest, ADumperAbortsWhenItCannotCreateItsFile) {
  writeFile("file", "");
  fs::create_directory("disk");
  fs::permissions("disk", fs::perms::owner_read | fs::perms::owner_exe);
  fs::permissions(".", fs::perms::all_all);
  for (const char* target : {"disk/stat.json", "disk/inner/stat.json", "file/stat.json"}) {
    expectAbort(" real_file:" + fs::absolute(target).string() + ".writing\n", [&] {
      if (::geteuid() == 0 && ::setuid(65534) != 0) return;  // root may write to any directory
      const TimedStatDumper dumper(&statistics, target);
    });
  }
}

TEST_F(StatisticsFileTest, ATemporaryNameThatIsTooLongIsCut) {
  fs::create_directory("x");
  const std::string folder = (directory.path() / "x").generic_string() + "/";
  const std::string target = std::string(259 - folder.size(), 's');
  { TimedStatDumper dumper(&statistics, folder + target); }
  ASSERT_EQ(1, std::distance(fs::directory_iterator("x"), fs::directory_iterator()));
  EXPECT_EQ(target, fs::directory_iterator("x")->path().filename().string());
}

TEST_F(StatisticsFileTest, WithTheVariableEachOfManyTimersRewritesItsFile) {
  ::setenv("LIBVARROW_TIMED_STAT_DUMP", "", 1);
  {
    std::vector<std::unique_ptr<TimedStatDumper>> others;
    for (int i = 0; i < 40; ++i) {
      others.push_back(
          std::make_unique<TimedStatDumper>(&statistics, "others/" + std::to_string(i)));
    }
    TimedStatDumper dumper(&statistics, "new/stat.json");
    dumper.restart(5);
    EXPECT_TRUE(eventually([] { return fs::exists("new/stat.json"); }));
    statistics.getCountStatistics("rows");
    ::unsetenv("LIBVARROW_TIMED_STAT_DUMP");
  }
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile("new/stat.json"));
}

}  // namespace
