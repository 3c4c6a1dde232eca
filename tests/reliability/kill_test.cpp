// A process that is killed while a timer writes its statistics.
#include <sys/wait.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <random>

#include "libvarrow/json/json.h"
#include "libvarrow/statistics/TimedStatDumper.h"
#include "support/support.h"

namespace {

using namespace libvarrow;

constexpr int kKills = 250;
constexpr int kLongestLifeUs = 40000;
constexpr const char* kFile = "run/stat.json";

class KillTest : public test_support::InTemporaryDirectory {
 protected:
  KillTest() { ::setenv("LIBVARROW_TIMED_STAT_DUMP", "1", 1); }
  ~KillTest() override { ::unsetenv("LIBVARROW_TIMED_STAT_DUMP"); }

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
    EXPECT_TRUE(test_support::eventually(isOver));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }

  StatisticsContainer statistics_{"run"};
};

TEST_F(KillTest, TheFileIsWholeOrAbsentWheneverTheProcessIsKilled) {
  constexpr unsigned kSeed = 20240305;
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<int> life(0, kLongestLifeUs);
  CountStatistics* kill = statistics_.getCountStatistics("kill");
  // A single long text: written for long, rendered fast.
  statistics_.getJsonStatistics("text", Json::Value(std::string(std::size_t{1} << 20, 'x')));
  statistics_.getCountStatistics("last", 1);
  int written = 0;
  for (int i = 1; i <= kKills; ++i) {
    kill->inc();
    ASSERT_EQ(SIGKILL, killed(std::chrono::microseconds(life(random))));
    if (!boost::filesystem::exists(kFile)) continue;
    Json::Value entries;
    ASSERT_NO_THROW(entries = File2Json(kFile)["run"]) << "kill " << i << ", seed " << kSeed;
    EXPECT_EQ(1, entries[2]["last"].asInt());
    written += entries[0]["kill"].asInt() == i ? 1 : 0;
  }
  std::cout << written << " of " << kKills << " processes wrote before they were killed\n";
  EXPECT_GT(written, kKills / 10);
}

}  // namespace
