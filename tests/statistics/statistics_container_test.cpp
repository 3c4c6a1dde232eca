// The tree of statistics.
#include "libvarrow/statistics/StatisticsContainer.h"

#include <gtest/gtest.h>

#include <json/writer.h>

namespace {

using namespace libvarrow;

std::string onOneLine(const CommonStatistics& statistic) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  return Json::writeString(builder, statistic.toJsonValue4Bind());
}

class Watched : public CommonStatistics {
 public:
  explicit Watched(int& destroyed) : destroyed_(destroyed) {}
  ~Watched() override { ++destroyed_; }
  Json::Value toJsonValue4Bind() const override { return Json::Value("watched"); }

 private:
  int& destroyed_;
};

TEST(StatisticsContainerTest, EveryGetCreatesANewEntryInOrder) {
  StatisticsContainer root("root");
  EXPECT_EQ(R"({"root":[]})", onOneLine(root));
  root.getCountStatistics("rows", 7)->inc();
  root.getCountStatistics("rows", 1);
  root.getPercentStatistics("done", 2)->inc();
  root.getDistributionStatistics("kinds")->inc("a", 1);
  const Json::Value value(5);
  root.getJsonStatistics("copied", value);
  root.getJsonStatistics("pointed", &value);
  root.getJsonStatistics("nothing", nullptr);
  root.getStatisticsContainer("reader")->getTimeStatistics("t");
  EXPECT_EQ(R"({"root":[{"rows":8},{"rows":1},{"done":"1/2;50%"},)"
            R"({"kinds":{"__key_count__":1,"__sum__":1,"a":"count=1, proportion=100%"}},)"
            R"({"copied":5},{"pointed":5},{"nothing":null},{"reader":[{"t":{"minutes":0.0}}]}]})",
            onOneLine(root));
}

TEST(StatisticsContainerTest, AnEmptyTimerNameComesFromTheContainer) {
  StatisticsContainer solver("solver");
  solver.getTimeStatistics("");
  StatisticsContainer nameless("");
  nameless.getTimeStatistics("");
  EXPECT_EQ(R"({"solver":[{"solverTime_Dur":{"minutes":0.0}}]})", onOneLine(solver));
  EXPECT_EQ(R"({"":[{"Time_Dur":{"minutes":0.0}}]})", onOneLine(nameless));
}

TEST(StatisticsContainerTest, AChildContainerStandsUnderItsOwnName) {
  StatisticsContainer root("root");
  root.addStat("x", new StatisticsContainer("y"));
  root.addStat("nothing", nullptr);
  EXPECT_EQ(R"({"root":[{"y":[]},{"nothing":null}]})", onOneLine(root));
}

TEST(StatisticsContainerTest, MergingMovesEntriesAndEachIsDestroyedOnce) {
  int destroyed = 0;
  {
    StatisticsContainer a("a");
    StatisticsContainer b("b");
    a.getCountStatistics("own");
    b.addStat("moved", new Watched(destroyed));
    b.getStatisticsContainer("inner")->addStat("deep", new Watched(destroyed));
    a.merge(&b);
    EXPECT_EQ(R"({"b":[]})", onOneLine(b));
    EXPECT_EQ(R"({"a":[{"own":0},{"moved":"watched"},{"inner":[{"deep":"watched"}]}]})",
              onOneLine(a));
    a.merge(&a);
    EXPECT_EQ(3u, a.toJsonValue4Bind()["a"].size());
    b.getCountStatistics("later");
    EXPECT_EQ(R"({"b":[{"later":0}]})", onOneLine(b));
    EXPECT_EQ(0, destroyed);
  }
  EXPECT_EQ(2, destroyed);
}

}  // namespace
