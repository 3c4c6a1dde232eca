// Processes in which a timer writes the statistics: killed, or forking.
#include <sys/wait.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <random>

#include "libvarrow/statistics/TimedStatDumper.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace test_support;
namespace fs = boost::filesystem;

constexpr const char* kFile = "run/stat.json";

class TimerProcessTest : public InTemporaryDirectory {
 protected:
  TimerProcessTest() { ::setenv("LIBVARROW_TIMED_STAT_DUMP", "1", 1); }
  ~TimerProcessTest() override { ::unsetenv("LIBVARROW_TIMED_STAT_DUMP"); }

  // The signal that ended a process which did nothing but write, and was killed once it had used
  // `life` of processor time: a busy machine lets it get as far as an idle one.
  int killed(std::chrono::microseconds life) {
    const pid_t child = ::fork();
    if (child == 0) {
      TimedStatDumper dumper(&statistics_, kFile);
      dumper.restart(1);
      for (;;) ::pause();
    }
    clockid_t clock{};
    ::clock_getcpuclockid(child, &clock);
    std::timespec used{};
    const auto isOver = [&] {
      ::clock_gettime(clock, &used);
      return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec) >= life;
    };
    EXPECT_TRUE(eventually(isOver));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }

  static int rowsIn(const std::string& file) { return File2Json(file)["run"][0]["rows"].asInt(); }
  // Until the timer writes `rows`; the file is not there while it is replaced.
  static bool isWritten(int rows) {
    return eventually([rows] {
      std::ifstream file(kFile);
      return contains(std::string(std::istreambuf_iterator<char>(file), {}), std::to_string(rows));
    });
  }

  StatisticsContainer statistics_{"run"};
  CountStatistics* rows_ = statistics_.getCountStatistics("rows");
};

TEST_F(TimerProcessTest, TheFileIsWholeOrAbsentWheneverTheProcessIsKilled) {
  constexpr int kKills = 250;
  constexpr unsigned kSeed = 20240305;
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<int> lifeUs(0, 40000);
  // A single long text: written for long, rendered fast.
  statistics_.getJsonStatistics("text", Json::Value(std::string(std::size_t{1} << 20, 'x')));
  statistics_.getCountStatistics("last", 1);
  int written = 0;
  for (int i = 1; i <= kKills; ++i) {
    rows_->inc();
    ASSERT_EQ(SIGKILL, killed(std::chrono::microseconds(lifeUs(random))));
    if (!fs::exists(kFile)) continue;
    Json::Value entries;
    ASSERT_NO_THROW(entries = File2Json(kFile)["run"]) << "kill " << i << ", seed " << kSeed;
    EXPECT_EQ(1, entries[2]["last"].asInt());
    written += entries[0]["rows"].asInt() == i ? 1 : 0;
  }
  std::cout << written << " of " << kKills << " processes wrote before they were killed\n";
  EXPECT_GT(written, kKills / 10);
}

TEST_F(TimerProcessTest, ChildrenThatExecOrEndAtOnceLeaveTheParentsTimerAndFileAlone) {
  constexpr int kChildren = 40;
  // In a process of its own: the timers' threads stay, and the forks of later tests lack them.
  const ChildResult parent = runInChild([this] {
    rows_->inc(1000);
    {
      TimedStatDumper dumper(&statistics_, kFile);
      dumper.restart(1);
      for (int i = 1; i <= kChildren; ++i) {
        rows_->inc();
        const ChildResult child = runInChild([&] {
          if (i % 2 == 0) return;  // ends by _exit
          fs::create_directory("child");
          fs::current_path("child");
          ::execl(EXIT_HOST, EXIT_HOST, "d", PLUGINS, "return", nullptr);
          throw std::runtime_error("no " EXIT_HOST);
        });
        EXPECT_EQ(0, child.exitCode) << child.signal << child.errors;
        EXPECT_EQ(i % 2 == 0 ? 0 : 2, fs::exists("child") ? rowsIn("child/first.json") : 0);
        fs::remove_all("child");
        EXPECT_TRUE(isWritten(1000 + i)) << i;
      }
      rows_->inc();
    }
    EXPECT_EQ(1001 + kChildren, rowsIn(kFile));
    ::_exit(HasFailure() ? 1 : 0);
  });
  EXPECT_EQ(0, parent.exitCode) << parent.output << parent.errors;
}

}  // namespace
