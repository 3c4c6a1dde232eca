// What each statistic renders, alone and in a tree.

#include <boost/date_time/posix_time/posix_time.hpp>
#include <limits>

#include "libvarrow/statistics/StatisticsContainer.h"
#include "support/FarZone.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using boost::posix_time::time_from_string;
using namespace test_support;

TEST(CountStatisticsTest, CountsFromItsInitialValueOnACacheLineOfItsOwn) {
  CountStatistics count(-3);
  count.inc();
  count.inc(7);
  EXPECT_EQ(Json::Value(static_cast<Json::Int64>(5)), count.toJsonValue4Bind());
  EXPECT_EQ(64u, alignof(CountStatistics));
}

TEST(PercentStatisticsTest, RendersCountTotalAndPercentInSixDigits) {
  const struct {
    std::uint64_t count, total;
    const char* text;
  } cases[] = {{3, 4, "3/4;75%"},
               {1, 3, "1/3;33.3333%"},
               {5, 0, "5/0;inf%"},
               {12345678, 1, "12345678/1;1.23457e+09%"}};
  for (const auto& c : cases) {
    PercentStatistics percent(c.total);
    percent.inc(c.count);
    EXPECT_EQ(Json::Value(c.text), percent.toJsonValue4Bind());
  }
  const std::string none = PercentStatistics(0).toJsonValue4Bind().asString();
  EXPECT_TRUE(none == "0/0;nan%" || none == "0/0;-nan%") << none;
}

TEST(NumStatisticsTest, PrintedBoundsAreScaledByTheInterval) {
  NumStatistics numbers(10);
  EXPECT_TRUE(numbers.toJsonValue4Bind().isNull());
  for (const double sample : {25.0, 26.5, -2.5, 10.0, 10.0, 19.5}) numbers.add(sample);
  Json::Value expected = json(R"j({"[0-10)": "1,   16.67%", "[100-110)": "3,   50.00%",
                                   "[200-210)": "2,   33.33%", "min": -2.5, "max": 26.5,
                                   "sum": 88.5, "sum/count": 14.75})j");
  expected["count"] = 6u;
  EXPECT_EQ(expected, numbers.toJsonValue4Bind());
}

TEST(NumStatisticsTest, SamplesThatNoBucketHoldsAreSettled) {
  const struct {
    double sample;
    const char* bucket;
  } cases[] = {{-std::numeric_limits<double>::infinity(), "[0-1)"},
               {std::numeric_limits<double>::quiet_NaN(), "[0-1)"},
               {9223372036854775808.0, "[9223372036854775808-9223372036854775809)"},
               {std::numeric_limits<double>::infinity(), "[18446744073709551615-0)"},
               {1e300, "[18446744073709551615-0)"}};
  for (const auto& c : cases) {
    NumStatistics numbers;
    numbers.add(c.sample);
    EXPECT_TRUE(numbers.toJsonValue4Bind().isMember(c.bucket)) << numbers.dumpAsJsonString();
  }
}

TEST(NumStatisticsTest, OfBucketsWhoseScaledNamesAreOneTheHighestIsShown) {
  NumStatistics numbers(std::uint64_t{1} << 32);
  for (const double sample : {0.0, 0.0, 4294967296.0, 9223372036854775808.0}) numbers.add(sample);
  EXPECT_EQ("1,   25.00%", numbers.toJsonValue4Bind()["[0-4294967296)"].asString());
}

TEST(DistributionStatisticsTest, MergingAddsKeyByKeyAndLeavesTheSource) {
  DistributionStatistics to, from;
  EXPECT_TRUE(to.toJsonValue4Bind().isNull());
  to.inc("b", 2);
  from.inc("b", 1);
  to.merge(&from);
  EXPECT_EQ((std::map<std::string, std::uint64_t>{{"b", 1}}), from.get());
  EXPECT_EQ((std::map<std::string, std::uint64_t>{{"b", 3}}), to.get());
  to.inc("c", 1234567);
  EXPECT_EQ("count=1.23457e+06, proportion=99.9998%", to.toJsonValue4Bind()["c"].asString());
}

TEST(TimeStatisticsTest, MinutesAreWholeSecondsFromFirstToLastAndAGuardAddsTwo) {
  TimeStatistics times;
  times.appendTime(time_from_string("2024-03-05 10:00:00"));
  EXPECT_EQ(json(R"({"minutes": 0.0, "timestamps": ["2024-03-05 10:00:00"]})"),
            times.toJsonValue4Bind());
  times.appendTime(time_from_string("2024-03-05 09:59:58.5"));
  EXPECT_EQ(-1 / 60.0, times.toJsonValue4Bind()["minutes"].asDouble()) << "cut toward zero";
  times.appendTime(time_from_string("2024-03-05 10:01:30.9"));
  EXPECT_EQ(1.5, times.toJsonValue4Bind()["minutes"].asDouble());
  EXPECT_EQ(boost::posix_time::millisec(90900), times.getDur());
  const FarZone zone;
  const std::string begin = zone.now();
  try {
    const TimeRecoderHelper guard(&times);
    throw 1;
  } catch (int) {
  }
  const Json::Value texts = times.toJsonValue4Bind()["timestamps"];
  ASSERT_EQ(5u, texts.size()) << "entry and exit of the guard";
  EXPECT_LE(begin, isoTime(texts[3].asString()));
  EXPECT_LE(isoTime(texts[4].asString()), zone.now());
}

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
    EXPECT_EQ(json(R"({"b": []})"), b.toJsonValue4Bind());
    EXPECT_EQ(0, destroyed);
  }
  EXPECT_EQ(2, destroyed);
}

TEST(StatisticsDeathTest, MisuseEndsTheProcess) {
  const testing::KilledBySignal aborted(SIGABRT);
  DistributionStatistics itself;
  EXPECT_EXIT(NumStatistics(0).add(1), aborted, "is false in function .*Backtrace:");
  EXPECT_EXIT(itself.merge(&itself), aborted, "is false in function .*Backtrace:");
  EXPECT_EXIT(CountStatistics().fromJsonValue4Bind(1), aborted, "Backtrace:");
}

}  // namespace
