// What threads share without knowing: converters, counters, the logger, crash handling.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <functional>
#include <thread>
#include <vector>

#include "cppbind/type/StringConverter.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/log/log.h"
#include "libvarrow/utility/UTFConverter.h"
#include "libvarrow/utility/text.h"
#include "support/TemporaryDirectory.h"

namespace {

using boost::posix_time::hours;
using boost::posix_time::ptime;

void onThreads(const std::function<void()>& body) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(body);
  for (std::thread& thread : threads) thread.join();
}

TEST(SharedTextTest, SeveralThreadsConvertByFacetAndNeverGetASerialNumberTwice) {
  std::atomic<std::uint64_t> sum{0};
  onThreads([&] {
    for (int i = 0; i < 500; ++i) {
      sum += libvarrow::getSerialNum("shared");
      const std::string text = "2024/03/" + std::to_string(10 + i % 20) + " 07:08:09";
      EXPECT_EQ(10 + i % 20, cppbind::BoostPTimeText::fromString(text).date().day());
      EXPECT_EQ("not-a-date-time", cppbind::BoostPTimeText::toString(ptime()));
      EXPECT_EQ(hours(5), cppbind::BoostTimeDurationText::fromString("05:00:00"));
      EXPECT_EQ("小", libvarrow::utility::fromUtf8("小"));
    }
  });
  EXPECT_EQ(1999u * 2000 / 2, sum);
}

TEST(SharedTextTest, ThreadsLogAndInstallTheHandlerAtOnce) {
  const test_support::TemporaryDirectory directory;
  InitRootLogger("none");
  onThreads([] {
    libvarrow::init_error_handler(false);
    for (int i = 0; i < 50; ++i) LIBVARROW_LOG_INFO("line %d", i);
  });
  const std::string log = test_support::readFile("log.txt");
  // One line of the set-up, two for each of the four handler messages, fifty for each thread.
  EXPECT_EQ(1 + 4 * 2 + 4 * 50, std::count(log.begin(), log.end(), '\n'));
}

}  // namespace
