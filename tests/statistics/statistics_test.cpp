// The rendering of each statistic, alone and in a tree, and the progress of a computation.

#include <algorithm>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/make_shared.hpp>
#include <limits>
#include <random>

#include "libvarrow/statistics/ProgressStatistics.h"
#include "libvarrow/statistics/StatisticsContainer.h"
#include "support/FarZone.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using boost::posix_time::time_from_string;
using namespace test_support;

static_assert(alignof(CountStatistics) == 64, "no counter shares a cache line");

TEST(PercentStatisticsTest, PercentsHaveSixDigitsOrAreInfOrNan) {
  const auto rendered = [](std::uint64_t count, std::uint64_t total) {
    PercentStatistics percent(total);
    percent.inc(count);
    return percent.toJsonValue4Bind().asString();
  };
  EXPECT_EQ("5/0;inf%", rendered(5, 0));
  EXPECT_TRUE(rendered(0, 0) == "0/0;nan%" || rendered(0, 0) == "0/0;-nan%") << rendered(0, 0);
}

TEST(NumStatisticsTest, ExtremeSamplesCountInTheOuterBuckets) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::pair<double, const char*> cases[] = {
      {std::numeric_limits<double>::quiet_NaN(), "[0-1)"},
      {9223372036854775808.0, "[9223372036854775808-9223372036854775809)"},
      {kInfinity, "[18446744073709551615-0)"}};
  for (const auto& [sample, bucket] : cases) {
    NumStatistics numbers;
    EXPECT_TRUE(numbers.toJsonValue4Bind().isNull());
    numbers.add(sample);
    EXPECT_TRUE(numbers.toJsonValue4Bind().isMember(bucket)) << numbers.dumpAsJsonString();
  }
  NumStatistics mixed;  // buckets that come in any order and lie far apart
  for (const double sample : {3.0, 700.0, 3.0, 1023.0, 1024.0, 1e6, 1024.5, 3.9}) mixed.add(sample);
  const Json::Value buckets = mixed.toJsonValue4Bind();
  EXPECT_EQ(5U + 5U, buckets.size()) << buckets;
  EXPECT_EQ("3,   37.50%", buckets["[3-4)"].asString());
  EXPECT_EQ("1,   12.50%", buckets["[1023-1024)"].asString());
  EXPECT_EQ("2,   25.00%", buckets["[1024-1025)"].asString());
  // Of buckets with equal names the highest is shown.
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

// Records the same calls in several orders, and some of them in an object that is merged.
TEST(RejectionStatisticsTest, TheResultDoesNotDependOnTheOrderOfCalls) {
  using boost::posix_time::minutes;
  using boost::posix_time::seconds;
  constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
  using Call = std::function<void(RejectionStatistics&)>;
  std::vector<Call> calls = {
      [](auto& to) { to.rejected("C017", "OT2", "room too short", minutes(30)); },
      [](auto& to) { to.rejected("C017", "OT1", "room too short", seconds(1801)); },
      [](auto& to) { to.rejected("C017", "OT3", "room too short", minutes(30)); },
      [](auto& to) { to.rejected("C017", "OT0", "room too short"); },
      [](auto& to) { to.rejected("C017", "A", "room too short", boost::posix_time::neg_infin); },
      [](auto& to) { to.rejected("C017", "d", "surgeon off duty"); },
      [](auto& to) { to.rejected("C017", "c", "surgeon off duty", kNoNumber); },
      [](auto& to) { to.rejected("C0", "17", "too heavy", 0.0); },
      [](auto& to) { to.rejected("C0", "17", "too heavy", -0.0); },
      [](auto& to) { to.rejected("C0", "16", "too heavy", 0.5); },
      [](auto& to) { to.placed("C0"); },
      [](auto& to) { to.placed("C1"); }};
  const char* const expected = R"({"__rejections__": {"dropped": 0, "subjects": {
      "C017": {"placed": false, "examined": 7, "reasons": {
        "room too short": {"count": 5, "nearest": "OT2", "short_by": "00:30:00"},
        "surgeon off duty": {"count": 2, "example": "c"}}},
      "C0": {"placed": true, "examined": 3, "reasons": {
        "too heavy": {"count": 3, "nearest": "17", "short_by": 0.0}}},
      "C1": {"placed": true, "examined": 0, "reasons": {}}}}})";
  std::mt19937 random(1);
  std::string first;
  for (int round = 0; round < 200; ++round) {
    std::shuffle(calls.begin(), calls.end(), random);
    RejectionStatistics to, from;
    for (const Call& call : calls) call(random() % 3 == 0 ? from : to);
    to.merge(&from);
    const std::string text = to.dumpAsJsonString();
    if (first.empty()) first = text;
    ASSERT_EQ(first, text);
  }
  EXPECT_EQ(json(expected), json(first));
}

TEST(RejectionStatisticsTest, PairsBeyondTheLargestNumberAreOnlyCounted) {
  RejectionStatistics few(2), more;
  for (const char* subject : {"a", "b", "c", "c"}) {
    more.rejected(subject, "", "late");
    few.rejected(subject, "x", "late", 1);
  }
  few.rejected("a", "", "early");
  few.placed("a");
  few.placed("d");
  few.merge(&more);
  const Json::Value content = json(few.dumpAsJsonString())["__rejections__"];
  EXPECT_EQ(6, content["dropped"].asInt());
  EXPECT_EQ(json(R"({"a": {"placed": true, "examined": 2,
                           "reasons": {"late": {"count": 2, "nearest": "x", "short_by": 1.0}}},
                     "b": {"placed": false, "examined": 2,
                           "reasons": {"late": {"count": 2, "nearest": "x", "short_by": 1.0}}}})"),
            content["subjects"]);
}

TEST(TimeStatisticsTest, MinutesAreWholeSecondsFromFirstToLast) {
  TimeStatistics times;
  const std::pair<const char*, double> cases[] = {{"2024-03-05 10:00:00", 0},
                                                  {"2024-03-05 09:59:58.5", -1 / 60.0},
                                                  {"2024-03-05 10:01:30.9", 1.5}};
  for (const auto& [time, minutes] : cases) {
    times.appendTime(time_from_string(time));
    EXPECT_EQ(minutes, times.toJsonValue4Bind()["minutes"].asDouble()) << time;
  }
  EXPECT_EQ(boost::posix_time::millisec(90900), times.getDur());
  const FarZone zone;
  const std::string begin = zone.before();
  { const TimeRecoderHelper guard(&times); }
  const Json::Value texts = times.toJsonValue4Bind()["timestamps"];
  ASSERT_EQ(5u, texts.size()) << "entry and exit of the guard";
  EXPECT_EQ("2024-03-05 09:59:58", texts[1].asString());
  EXPECT_LE(begin, isoTime(texts[3].asString()));
  EXPECT_LE(isoTime(texts[4].asString()), zone.after());
}

TEST(ProgressStatisticsTest, PercentsAreRoundedDown) {
  SimpleProgressStatistics steps(3);
  steps.inc(2);
  EXPECT_EQ(66u, steps.getProcessPercent());
}

TEST(StatisticsContainerTest, EveryCallAddsAnEntryInOrder) {
  StatisticsContainer root("root");
  root.getCountStatistics("rows", -7)->inc();
  Json::Value value(5);
  root.getJsonStatistics("copied", value);
  root.getJsonStatistics("pointed", &value);
  value = 6;
  root.getJsonStatistics("nothing", nullptr);
  root.getJsonStatistics("set later")->setJsonValue(value);
  root.getTimeStatistics("");
  root.getStatisticsContainer("")->getTimeStatistics("");
  root.addStat("x", new StatisticsContainer("y"));
  root.addStat("null", nullptr);
  EXPECT_EQ(json(R"({"root": [{"rows": -6}, {"copied": 5}, {"pointed": 5},
                     {"nothing": null}, {"set later": 6}, {"rootTime_Dur": {"minutes": 0.0}},
                     {"": [{"Time_Dur": {"minutes": 0.0}}]}, {"y": []}, {"null": null}]})"),
            root.toJsonValue4Bind());
}

// AddressSanitizer finds entries that are not destroyed exactly once.
TEST(StatisticsContainerTest, MergingMovesEntries) {
  StatisticsContainer a("a"), b("b");
  a.getCountStatistics("own");
  b.addStat("moved", new CountStatistics());
  b.getStatisticsContainer("inner")->getCountStatistics("deep");
  a.merge(&b);
  a.merge(&a);
  EXPECT_EQ(json(R"({"a": [{"own": 0}, {"moved": 0}, {"inner": [{"deep": 0}]}]})"),
            a.toJsonValue4Bind());
  EXPECT_EQ(json(R"({"b": []})"), b.toJsonValue4Bind());
}

TEST(StatisticsTest, MisuseEndsTheProcess) {
  DistributionStatistics itself;
  RejectionStatistics itselfToo;
  const std::pair<const char*, std::function<void()>> faults[] = {
      {"'interval_ != 0' is false", [] { NumStatistics(0).add(1); }},
      {"'other != this' is false", [&] { itself.merge(&itself); }},
      {"'other != this' is false", [&] { itselfToo.merge(&itselfToo); }},
      {"BackTraceException", [] { CountStatistics().fromJsonValue4Bind(1); }},
      {"'total() != 0' is false", [] { SimpleProgressStatistics(0).getProcessPercent(); }},
      {"'!children_.empty()' is false", [] { ComposedProgressStatistics({}).toJsonValue4Bind(); }}};
  for (const auto& [report, call] : faults) expectAbort(report, call);
}

}  // namespace
