// Statistics files, on demand and on a timer.
#include "libvarrow/statistics/TimedStatDumper.h"

#include <boost/filesystem/operations.hpp>
#include <chrono>
#include <fstream>
#include <memory>
#include <thread>
#include <vector>

#include "support/environment.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace test_support;
namespace fs = boost::filesystem;

class StatisticsFileTest : public InTemporaryDirectory {
 protected:
  StatisticsFileTest() { unsetVariable("LIBVARROW_TIMED_STAT_DUMP"); }

  StatisticsContainer statistics{"run"};
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

TEST_F(StatisticsFileTest, AFileThatAReaderHoldsForAMomentIsReplaced) {
  writeFile("stat.json", "old");
  std::ifstream reader("stat.json");
  ASSERT_TRUE(reader);
  std::thread closing([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    reader.close();
  });
  { const TimedStatDumper dumper(&statistics, "stat.json"); }
  closing.join();
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile("stat.json"));
}

TEST_F(StatisticsFileTest, ADumperAbortsWhenItCannotCreateItsFile) {
  writeFile("file", "");
  writeFile("stat.json.writing/inner", "");
  writeFile("full/inner", "");
  const std::string failed = " real_file:" + directory.path().generic_string();
  const std::pair<std::string, std::string> cases[] = {
      {"file/stat.json", failed + "/file/stat.json.writing\n"},
      {"stat.json", failed + "/stat.json.writing\n"},
      {"full", "filesystem_error"}};
  for (const auto& [target, report] : cases) {
    expectAbort(report, [&, file = target] { const TimedStatDumper dumper(&statistics, file); });
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
  setVariable("LIBVARROW_TIMED_STAT_DUMP", "");
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
    unsetVariable("LIBVARROW_TIMED_STAT_DUMP");
  }
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile("new/stat.json"));
}

}  // namespace
