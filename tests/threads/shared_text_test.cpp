// What threads share without knowing: converters, counters, the logger, crash handling.
#include <gtest/gtest.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <functional>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "cppbind/type/StringConverter.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/log/log.h"
#include "libvarrow/utility/UTFConverter.h"
#include "libvarrow/utility/text.h"
#include "support/TemporaryDirectory.h"

namespace {

void onThreads(const std::function<void()>& body) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(body);
  for (std::thread& thread : threads) thread.join();
}

TEST(SharedTextTest, ConvertersReadAndWriteByFacetOnSeveralThreads) {
  onThreads([] {
    for (int i = 0; i < 200; ++i) {
      const std::string text = "2024/03/" + std::to_string(10 + i % 20) + " 07:08:09";
      const auto time = cppbind::BoostPTimeText::fromString(text);
      EXPECT_EQ(10 + i % 20, time.date().day());
      EXPECT_EQ("not-a-date-time",
                cppbind::BoostPTimeText::toString(boost::posix_time::not_a_date_time));
      EXPECT_EQ(boost::posix_time::hours(5),
                cppbind::BoostTimeDurationText::fromString("05:00:00"));
      EXPECT_EQ("小", libvarrow::utility::fromUtf8("小"));
    }
  });
}

TEST(SharedTextTest, SerialNumbersAreNeverGivenTwice) {
  std::mutex mutex;
  std::set<std::uint64_t> seen;
  onThreads([&] {
    for (int i = 0; i < 500; ++i) {
      const std::uint64_t number = libvarrow::getSerialNum("shared");
      const std::lock_guard<std::mutex> lock(mutex);
      EXPECT_TRUE(seen.insert(number).second);
    }
  });
  EXPECT_EQ(1999u, *seen.rbegin());
}

TEST(SharedTextTest, ThreadsLogAndInstallTheHandlerAtOnce) {
  const test_support::TemporaryDirectory directory;
  InitRootLogger("none");
  onThreads([] {
    libvarrow::init_error_handler(false);
    for (int i = 0; i < 50; ++i) LIBVARROW_LOG_INFO("line %d", i);
  });
  const std::string log = test_support::readFile("log.txt");
  std::size_t lines = 0;
  for (const char c : log) lines += c == '\n' ? 1 : 0;
  // One line of the set-up, two for each of the four handler messages, fifty for each thread.
  EXPECT_EQ(1u + 4 * 2 + 4 * 50, lines);
}

}  // namespace
