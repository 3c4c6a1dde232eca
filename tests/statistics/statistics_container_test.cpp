// The tree of statistics.
#include "libvarrow/statistics/StatisticsContainer.h"

#include <gtest/gtest.h>

#include "support/json.h"

namespace {

using namespace libvarrow;
using test_support::json;

TEST(StatisticsContainerTest, EveryCallAddsAnEntryInOrderWhichMayTakeTheContainersName) {
  StatisticsContainer root("root");
  root.getCountStatistics("rows", 7)->inc();
  root.getCountStatistics("rows", 1);
  root.getPercentStatistics("done", 2)->inc();
  root.getDistributionStatistics("kinds")->inc("a", 1);
  Json::Value value(5);
  root.getJsonStatistics("copied", value);
  root.getJsonStatistics("pointed", &value);
  value = 6;
  root.getJsonStatistics("nothing", nullptr);
  root.getJsonStatistics("set later")->setJsonValue(value);
  root.getStatisticsContainer("reader")->getTimeStatistics("t");
  root.getTimeStatistics("");
  root.getStatisticsContainer("")->getTimeStatistics("");
  root.addStat("x", new StatisticsContainer("y"));
  root.addStat("null", nullptr);
  EXPECT_EQ(json(R"({"root": [{"rows": 8}, {"rows": 1}, {"done": "1/2;50%"}, {"kinds":
                     {"__key_count__": 1, "__sum__": 1, "a": "count=1, proportion=100%"}},
                     {"copied": 5}, {"pointed": 5}, {"nothing": null}, {"set later": 6},
                     {"reader": [{"t": {"minutes": 0.0}}]}, {"rootTime_Dur": {"minutes": 0.0}},
                     {"": [{"Time_Dur": {"minutes": 0.0}}]}, {"y": []}, {"null": null}]})"),
            root.toJsonValue4Bind());
}

struct Watched : CountStatistics {
  explicit Watched(int& counter) : destroyed(counter) {}
  ~Watched() override { ++destroyed; }
  int& destroyed;
};

TEST(StatisticsContainerTest, MergingMovesEntriesAndEachIsDestroyedOnce) {
  int destroyed = 0;
  {
    StatisticsContainer a("a");
    StatisticsContainer b("b");
    a.getCountStatistics("own");
    b.addStat("moved", new Watched(destroyed));
    b.getStatisticsContainer("inner")->addStat("deep", new Watched(destroyed));
    a.merge(&b);
    a.merge(&a);
    EXPECT_EQ(json(R"({"a": [{"own": 0}, {"moved": 0}, {"inner": [{"deep": 0}]}]})"),
              a.toJsonValue4Bind());
    b.getCountStatistics("later");
    EXPECT_EQ(json(R"({"b": [{"later": 0}]})"), b.toJsonValue4Bind());
    EXPECT_EQ(0, destroyed);
  }
  EXPECT_EQ(2, destroyed);
}

}  // namespace
