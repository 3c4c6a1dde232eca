// Children of a process whose timers run.
#include <sys/wait.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <cstdlib>
#include <fstream>

#include "libvarrow/json/json.h"
#include "libvarrow/statistics/TimedStatDumper.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace test_support;
namespace fs = boost::filesystem;

constexpr const char* kFile = "parent.json";
constexpr int kChildren = 40;

class ForkTest : public InTemporaryDirectory {
 protected:
  ForkTest() { ::setenv("LIBVARROW_TIMED_STAT_DUMP", "1", 1); }
  ~ForkTest() override { ::unsetenv("LIBVARROW_TIMED_STAT_DUMP"); }

  static int rowsIn(const std::string& file) { return File2Json(file)["run"][0]["rows"].asInt(); }
  // Until the timer writes `rows`; the file is not there while it is replaced.
  static bool isWritten(int rows) {
    return eventually([rows] {
      std::ifstream file(kFile);
      const std::string text(std::istreambuf_iterator<char>(file), {});
      return test_support::contains(text, std::to_string(rows));
    });
  }
  StatisticsContainer statistics_{"run"};
};

TEST_F(ForkTest, ChildrenThatExecOrEndAtOnceLeaveTheParentsTimerAndFileAlone) {
  // In a process of its own: the timers' threads stay, and the forks of later tests lack them.
  const ChildResult parent = runInChild([this] {
    CountStatistics* rows = statistics_.getCountStatistics("rows", 1000);
    {
      TimedStatDumper dumper(&statistics_, kFile);
      dumper.restart(1);
      for (int i = 1; i <= kChildren; ++i) {
        const std::string folder = "child" + std::to_string(i);
        fs::create_directory(folder);
        rows->inc();
        const ChildResult child = runInChild([&] {
          if (i % 2 == 0) return;  // ends by _exit
          fs::current_path(folder);
          ::execl(EXIT_HOST, EXIT_HOST, "d", PLUGINS, "return", nullptr);
          throw std::runtime_error("no " EXIT_HOST);
        });
        EXPECT_EQ(0, child.exitCode) << child.signal << child.errors;
        if (i % 2 != 0) {
          EXPECT_EQ(2, rowsIn(folder + "/first.json"));
        }
        EXPECT_TRUE(isWritten(1000 + i)) << i;
      }
      rows->inc();
    }
    EXPECT_EQ(1001 + kChildren, rowsIn(kFile));
    ::_exit(HasFailure() ? 1 : 0);
  });
  EXPECT_EQ(0, parent.exitCode) << parent.output << parent.errors;
}

}  // namespace
