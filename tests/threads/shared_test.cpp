// Objects that threads share: statistics, rules, converters, the logger, crash handling.
#include <algorithm>
#include <atomic>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <cstdlib>
#include <thread>
#include <vector>

#include "cppbind/cppbind.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/env/RunTimeEnv.h"
#include "libvarrow/json/json.h"
#include "libvarrow/log/log.h"
#include "libvarrow/statistics/ProgressStatistics.h"
#include "libvarrow/statistics/TimedStatDumper.h"
#include "libvarrow/time/TimeBlock.h"
#include "libvarrow/utility/UTFConverter.h"
#include "libvarrow/utility/text.h"
#include "libvarrow/xrule/Rule.h"
#include "support/environment.h"
#include "support/support.h"

namespace {

using namespace libvarrow;

constexpr int kThreads = 8;
constexpr int kRepeats = 3000;

struct Even : Rule {
  bool validate(int value) { return count(value % 2 == 0); }
};

void onThreads(const std::function<void(int)>& body) {
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) threads.emplace_back(body, i);
  for (std::thread& thread : threads) thread.join();
}

class SharedTest : public test_support::InTemporaryDirectory {};

TEST_F(SharedTest, TotalsAreExactDuringTimedDumpsAndMerges) {
  // A million updates: five kinds, eight threads.
  constexpr int kUpdates = 25000;
  constexpr int kTotal = kThreads * kUpdates;
  test_support::setVariable("LIBVARROW_TIMED_STAT_DUMP", "1");
  StatisticsContainer root("root");
  CountStatistics* count = root.getCountStatistics("count");
  auto* numbers = new NumStatistics(10);
  root.addStat("numbers", numbers);
  DistributionStatistics* distribution = root.getDistributionStatistics("distribution");
  auto* progress = new SimpleProgressStatistics(kTotal);
  root.addStat("progress", progress);
  StatisticsContainer* parts = root.getStatisticsContainer("parts");
  DistributionStatistics merged;
  RejectionStatistics* rejections = root.getRejectionStatistics("rejections");
  RejectionStatistics mergedRejections;
  TimeStatistics* times = parts->getTimeStatistics("times");
  {
    TimedStatDumper dumper(&root, "stat.json");
    dumper.restart(2);
    onThreads([&](int thread) {
      const std::string key = "key" + std::to_string(thread);
      for (int n = 0; n < kUpdates; ++n) {
        count->inc();
        numbers->add(thread * 10);
        distribution->inc(key, 2);
        progress->inc();
        rejections->rejected(n % 2 == 0 ? "even" : "odd", key, "late", kUpdates - n);
        if (n % 8 == 0 && thread == 0) {
          merged.merge(distribution);
          mergedRejections.merge(rejections);
        }
        if (n % 125 != 0) continue;
        EXPECT_LE(merged.get().size(), std::size_t{kThreads});
        EXPECT_LE(distribution->getCountSum(), 2u * kTotal);
        EXPECT_LE(progress->getProcessPercent(), 100u);
        times->appendCurrentLocalTime();
        parts->getJsonStatistics("at", Json::Value(n));
        parts->getStatisticsContainer("child")->getCountStatistics("n")->inc();
      }
    });
  }
  test_support::unsetVariable("LIBVARROW_TIMED_STAT_DUMP");
  const Json::Value entries = File2Json("stat.json")["root"];
  EXPECT_EQ(kTotal, entries[0]["count"].asInt());
  EXPECT_EQ(kTotal, entries[1]["numbers"]["count"].asInt());
  EXPECT_EQ("25000,   12.50%", entries[1]["numbers"]["[700-710)"].asString());
  EXPECT_EQ(2 * kTotal, entries[2]["distribution"]["__sum__"].asInt());
  EXPECT_EQ("200000/200000;100%", entries[3]["progress"].asString());
  EXPECT_EQ(test_support::json(R"({"count": 100000, "nearest": "key0", "short_by": 1.0})"),
            entries[5]["rejections"]["__rejections__"]["subjects"]["odd"]["reasons"]["late"]);
  const Json::Value& written = entries[4]["parts"];
  EXPECT_EQ(1u + 2 * kTotal / 125, written.size());
  EXPECT_EQ(kTotal / 125u, written[0]["times"]["timestamps"].size());
}

TEST_F(SharedTest, RulesSerialNumbersAndTheEnvironmentAreShared) {
  Even rule;
  std::atomic<std::uint64_t> sum{0};
  onThreads([&](int) {
    EXPECT_FALSE(RunTimeEnv::instance().runPath().empty());
    for (int i = 0; i < kRepeats; ++i) {
      rule.validate(i);
      sum += getSerialNum("shared");
    }
  });
  EXPECT_EQ(kThreads * kRepeats / 2, rule.getPassedCountValue());
  EXPECT_EQ(kThreads * kRepeats / 2, rule.getFailedCountValue());
  constexpr std::uint64_t kNumbers = kThreads * kRepeats;
  EXPECT_EQ((kNumbers - 1) * kNumbers / 2, sum);
}

TEST_F(SharedTest, ThreadsConvertTextAndShareAConstantCalendar) {
  using boost::posix_time::hours;
  TimeSlot slot;
  slot.time_begin = boost::posix_time::ptime(boost::gregorian::date(2024, 3, 5));
  slot.time_end = slot.time_begin + hours(8);
  // Sorted but overlapping slots do not meet the invariant of fast queries.
  TimeBlock calendar(std::vector<TimeSlot>{slot, slot});
  onThreads([&](int) {
    for (int i = 0; i < 500; ++i) {
      EXPECT_EQ(hours(10 + i % 10),
                cppbind::BoostTimeDurationText::fromString(std::to_string(10 + i % 10) + ":00:00"));
      EXPECT_EQ("not-a-date-time", cppbind::BoostPTimeText::toString(boost::posix_time::ptime()));
      EXPECT_EQ("é", utility::toUtf8(utility::fromUtf8("é")));
      EXPECT_EQ(hours(16), calendar.getTotalDur());
      EXPECT_TRUE(calendar.haveBlock(slot.time_begin, slot.time_end));
      EXPECT_EQ(2u, cppbind::JsonEncodeBinder().encode(calendar).size());
    }
  });
}

TEST_F(SharedTest, ThreadsLogAndInstallTheHandlerConcurrently) {
  InitRootLogger("none");
  onThreads([](int) {
    init_error_handler(false);
    for (int i = 0; i < 50; ++i) LIBVARROW_LOG_INFO("line %d", i);
  });
  const std::string log = test_support::readFile("log.txt");
  // One line of the set-up, two for each thread's handler message, and fifty of its own.
  EXPECT_EQ(1 + kThreads * (2 + 50), std::count(log.begin(), log.end(), '\n'));
}

}  // namespace
