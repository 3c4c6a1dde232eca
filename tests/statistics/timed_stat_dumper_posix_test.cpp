// Statistics files with links, limits and rights of POSIX.
#include <sys/resource.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>

#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/statistics/TimedStatDumper.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace test_support;
namespace fs = boost::filesystem;

class StatisticsFilePosixTest : public InTemporaryDirectory {
 protected:
  StatisticsContainer statistics{"run"};
};

TEST_F(StatisticsFilePosixTest, ADumperFirstWritesATemporaryFile) {
  writeFile("other", "as it was");
  fs::create_symlink("other", "stat.json.writing");
  { TimedStatDumper dumper(&statistics, "stat.json"); }
  EXPECT_EQ("as it was", readFile("other")) << "links are not followed";
  EXPECT_FALSE(fs::is_symlink("stat.json"));
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile("stat.json"));
}

TEST_F(StatisticsFilePosixTest, AnIncompleteFileDoesNotReplaceACompleteOne) {
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

TEST_F(StatisticsFilePosixTest, ADumperAbortsWithoutTheRightToCreateItsFile) {
  fs::create_directory("disk");
  fs::permissions("disk", fs::perms::owner_read | fs::perms::owner_exe);
  fs::permissions(".", fs::perms::all_all);
  for (const char* target : {"disk/stat.json", "disk/inner/stat.json"}) {
    expectAbort(" real_file:" + fs::absolute(target).string() + ".writing\n", [&] {
      if (::geteuid() == 0 && ::setuid(65534) != 0) return;  // root may write to any directory
      const TimedStatDumper dumper(&statistics, target);
    });
  }
}

}  // namespace
