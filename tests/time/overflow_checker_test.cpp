// Limits on sliding windows of dates and of values.
#include "libvarrow/time/overflow_checker.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using boost::gregorian::date;
using boost::gregorian::days;
using libvarrow::OverflowRange;
using libvarrow::overflowsChecker;

std::uint64_t excessOfDates(std::initializer_list<int> daysOfMonth, long window,
                            std::uint64_t limit, std::pair<int, int> where = {0, 0}) {
  std::set<date> dates;
  for (const int day : daysOfMonth) dates.insert(date(2024, 3, static_cast<unsigned short>(day)));
  OverflowRange<date> range{};
  const std::uint64_t found = overflowsChecker(dates, days(window), limit, &range);
  EXPECT_EQ(found, overflowsChecker(dates, days(window), limit, nullptr));
  EXPECT_EQ(found > 0, !range.begin.is_special());
  if (found > 0) {
    EXPECT_EQ(where.first, range.begin.day());
    EXPECT_EQ(where.second, range.end.day());
  }
  return found;
}

TEST(OverflowCheckerTest, AWindowOfDatesExcludesItsEnd) {
  EXPECT_EQ(1u, excessOfDates({1, 2, 3, 4}, 7, 3, {1, 4}));
  EXPECT_EQ(0u, excessOfDates({1, 8}, 7, 1));
  EXPECT_EQ(1u, excessOfDates({1, 7}, 7, 1, {1, 7}));
  EXPECT_EQ(1u, excessOfDates({1, 2, 10, 12, 13}, 4, 2, {10, 13}));
  EXPECT_EQ(2u, excessOfDates({5, 6}, 2, 0, {5, 6}));
  EXPECT_EQ(0u, excessOfDates({5}, 7, 0));
  EXPECT_EQ(0u, excessOfDates({}, 7, 0));
  EXPECT_EQ(0u, excessOfDates({1, 2, 3}, 0, 0) + excessOfDates({1, 2, 3}, -5, 0));
}

std::uint64_t excessOfValues(const std::vector<int>& values, std::uint64_t window, int limit,
                             std::pair<unsigned, unsigned> where = {9, 9}) {
  OverflowRange<std::uint64_t> range{9, 9};
  const std::uint64_t found = overflowsChecker(values, window, limit, &range);
  EXPECT_EQ(0u, overflowsChecker(values, window, limit, nullptr));
  EXPECT_EQ(where.first, range.begin);
  EXPECT_EQ(where.second, range.end);
  return found;
}

TEST(OverflowCheckerTest, ValuesAreSummedFromTheSecondWindowOn) {
  EXPECT_EQ(0u, excessOfValues({9, 1, 1, 1}, 2, 5));
  EXPECT_EQ(5u, excessOfValues({1, 1, 9, 1}, 2, 5, {0, 2}));
  EXPECT_EQ(1u, excessOfValues({0, 0, 0}, 0, -1, {0, 0}));
  EXPECT_EQ(4u, excessOfValues({0, 2, 3, 6}, 2, 5, {1, 3}));
  EXPECT_EQ(0u, excessOfValues({}, 2, 0));
  // 32 bits wrap around: the sum to -2, the excess of 2^31 - 1 over -2 to a negative number.
  const int most = std::numeric_limits<int>::max();
  EXPECT_EQ(0u, excessOfValues({0, most, most}, 2, 0, {9, 9}));
  EXPECT_EQ(static_cast<std::uint64_t>(-most - 1 + 0LL) + 1,
            excessOfValues({0, most, 0}, 1, -2, {0, 1}));
}

}  // namespace
