// What each statistic renders.
#include <gtest/gtest.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <cmath>
#include <csignal>
#include <limits>
#include <memory>

#include "libvarrow/statistics/StatisticsContainer.h"
#include "support/ChildProcess.h"
#include "support/json.h"

namespace {

using namespace libvarrow;
using boost::posix_time::ptime;
using boost::posix_time::time_from_string;
using test_support::json;

TEST(CountStatisticsTest, CountsFromItsInitialValue) {
  CountStatistics count(-3);
  count.inc();
  count.inc(7);
  EXPECT_EQ(Json::Value(static_cast<Json::Int64>(5)), count.toJsonValue4Bind());
  EXPECT_EQ("5\n", count.dumpAsJsonString());
  EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(&count) % 64);
  EXPECT_EQ(64u, sizeof(CountStatistics));
}

TEST(PercentStatisticsTest, RendersCountTotalAndPercentInSixDigits) {
  struct Case {
    std::uint64_t count, total;
    const char* text;
  };
  const Case cases[] = {{3, 4, "3/4;75%"},
                        {1, 3, "1/3;33.3333%"},
                        {5, 0, "5/0;inf%"},
                        {0, 7, "0/7;0%"},
                        {12345678, 1, "12345678/1;1.23457e+09%"}};
  for (const Case& c : cases) {
    PercentStatistics percent(c.total);
    percent.inc(c.count);
    EXPECT_EQ(Json::Value(c.text), percent.toJsonValue4Bind());
  }
  const std::string none = PercentStatistics(0).toJsonValue4Bind().asString();
  EXPECT_TRUE(none == "0/0;nan%" || none == "0/0;-nan%") << none;
}

TEST(NumStatisticsTest, RendersNullAtFirstAndOneBucketAfterOneSample) {
  NumStatistics numbers;
  EXPECT_TRUE(numbers.toJsonValue4Bind().isNull());
  numbers.add(2.5);
  EXPECT_EQ(json(R"j({"[2-3)": "1,   100.00%", "min": 2.5, "max": 2.5, "sum": 2.5, "sum/count": 2.5,
                       "count": 1})j")
                .toStyledString(),
            numbers.toJsonValue4Bind().toStyledString());
}

TEST(NumStatisticsTest, PrintedBoundsAreScaledByTheInterval) {
  NumStatistics numbers(10);
  for (const double sample : {25.0, 27.0, 0.7, 9.99, 10.0, 10.0, 10.0, 19.0}) numbers.add(sample);
  const Json::Value json = numbers.toJsonValue4Bind();
  EXPECT_EQ("2,   25.00%", json["[200-210)"].asString());
  EXPECT_EQ("2,   25.00%", json["[0-10)"].asString());
  EXPECT_EQ("4,   50.00%", json["[100-110)"].asString());
  EXPECT_EQ(0.7, json["min"].asDouble());
  EXPECT_EQ(27.0, json["max"].asDouble());
  EXPECT_EQ(8u, json["count"].asUInt());
  EXPECT_EQ(Json::uintValue, json["count"].type());
  EXPECT_EQ(Json::realValue, json["sum/count"].type());
}

TEST(NumStatisticsTest, SamplesThatNoBucketHoldsAreSettled) {
  struct Case {
    double sample;
    const char* bucket;
  };
  const Case cases[] = {{-2.5, "[0-1)"},
                        {-std::numeric_limits<double>::infinity(), "[0-1)"},
                        {std::nan(""), "[0-1)"},
                        {9223372036854775808.0, "[9223372036854775808-9223372036854775809)"},
                        {std::numeric_limits<double>::infinity(), "[18446744073709551615-0)"},
                        {1e300, "[18446744073709551615-0)"}};
  for (const Case& c : cases) {
    NumStatistics numbers;
    numbers.add(c.sample);
    EXPECT_TRUE(numbers.toJsonValue4Bind().isMember(c.bucket)) << numbers.dumpAsJsonString();
  }
  NumStatistics mixed;
  mixed.add(-2.5);
  mixed.add(1);
  EXPECT_EQ(-2.5, mixed.toJsonValue4Bind()["min"].asDouble());
}

TEST(NumStatisticsTest, OfBucketsWhoseScaledNamesAreOneTheHighestIsShown) {
  NumStatistics numbers(std::uint64_t{1} << 32);
  for (const double sample : {0.0, 0.0, 4294967296.0, 9223372036854775808.0}) numbers.add(sample);
  EXPECT_EQ("1,   25.00%", numbers.toJsonValue4Bind()["[0-4294967296)"].asString());
}

TEST(NumStatisticsTest, AnIntervalOfZeroEndsTheProcess) {
  const auto child = test_support::runInChild([] { NumStatistics(0).add(1); });
  EXPECT_EQ(SIGABRT, child.signal);
}

TEST(DistributionStatisticsTest, RendersCountsAndProportions) {
  DistributionStatistics distribution;
  EXPECT_TRUE(distribution.toJsonValue4Bind().isNull());
  EXPECT_EQ(0u, distribution.getCountSum());
  distribution.inc("b", 2);
  distribution.inc("a", 1);
  distribution.inc("b", 1);
  EXPECT_EQ(json(R"({"a": "count=1, proportion=25%", "b": "count=3, proportion=75%",
                       "__sum__": 4, "__key_count__": 2})")
                .toStyledString(),
            distribution.toJsonValue4Bind().toStyledString());
  EXPECT_EQ(Json::intValue, distribution.toJsonValue4Bind()["__sum__"].type());
  distribution.inc("c", 1234567);
  EXPECT_EQ("count=1.23457e+06, proportion=99.9997%",
            distribution.toJsonValue4Bind()["c"].asString());
}

TEST(DistributionStatisticsTest, MergingAddsKeyByKeyAndLeavesTheSource) {
  DistributionStatistics to;
  DistributionStatistics from;
  to.inc("a", 1);
  from.inc("a", 2);
  from.inc("b", 5);
  to.merge(&from);
  EXPECT_EQ((std::map<std::string, std::uint64_t>{{"a", 3}, {"b", 5}}), to.get());
  EXPECT_EQ((std::map<std::string, std::uint64_t>{{"a", 2}, {"b", 5}}), from.get());
  EXPECT_EQ(8u, to.getCountSum());
  EXPECT_EQ(SIGABRT, test_support::runInChild([&] { to.merge(&to); }).signal);
}

TEST(JsonStatisticsTest, HoldsACopy) {
  Json::Value value = json(R"({"a": [1]})");
  JsonStatistics copy(&value);
  const Json::Value before = value;
  value["a"] = 2;
  EXPECT_EQ(before, copy.toJsonValue4Bind());
  copy.setJsonValue(value);
  EXPECT_EQ(value, copy.toJsonValue4Bind());
  EXPECT_TRUE(JsonStatistics().toJsonValue4Bind().isNull());
}

TEST(TimeStatisticsTest, MinutesAreWholeSecondsFromFirstToLast) {
  TimeStatistics times;
  EXPECT_EQ(json(R"({"minutes": 0.0})").toStyledString(),
            times.toJsonValue4Bind().toStyledString());
  times.appendTime(time_from_string("2024-03-05 10:00:00"));
  EXPECT_EQ(json(R"({"minutes": 0.0, "timestamps": ["2024-03-05 10:00:00"]})").toStyledString(),
            times.toJsonValue4Bind().toStyledString());
  times.appendTime(time_from_string("2024-03-05 09:59:58.5"));
  EXPECT_EQ(-1 / 60.0, times.toJsonValue4Bind()["minutes"].asDouble()) << "cut toward zero";
  times.appendTime(time_from_string("2024-03-05 10:01:30.9"));
  EXPECT_EQ(1.5, times.toJsonValue4Bind()["minutes"].asDouble());
  EXPECT_EQ(3u, times.toJsonValue4Bind()["timestamps"].size());
  EXPECT_EQ(boost::posix_time::millisec(90900), times.getDur());
}

TEST(TimeStatisticsTest, AGuardRecordsEntryAndExitAlsoOfAnException) {
  TimeStatistics times;
  const ptime before = boost::posix_time::microsec_clock::local_time();
  try {
    const TimeRecoderHelper guard(&times);
    throw 1;
  } catch (int) {
  }
  EXPECT_EQ(2u, times.toJsonValue4Bind()["timestamps"].size());
  EXPECT_LE(times.getDur(), boost::posix_time::microsec_clock::local_time() - before);
}

TEST(CommonStatisticsTest, ReadingAStatisticEndsTheProcess) {
  const auto child =
      test_support::runInChild([] { CountStatistics().fromJsonValue4Bind(Json::Value(1)); });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_NE(std::string::npos, child.errors.find("Backtrace:"));
}

TEST(NumberTextTest, NumbersAreTheSameUnderALocaleWithDecimalComma) {
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  const auto render = [] {
    PercentStatistics percent(3);
    percent.inc(1234);
    NumStatistics numbers;
    numbers.add(1234.5);
    numbers.add(7);
    numbers.add(7);
    DistributionStatistics distribution;
    distribution.inc("a", 12345);
    distribution.inc("b", 1);
    return percent.dumpAsJsonString() + numbers.dumpAsJsonString() +
           distribution.dumpAsJsonString();
  };
  const std::string plain = render();
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Comma));
  const std::string underComma = render();
  std::locale::global(before);
  EXPECT_EQ(plain, underComma);
  EXPECT_NE(std::string::npos, plain.find("1,   33.33%"));
}

}  // namespace
