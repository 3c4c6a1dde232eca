// Random blocks, sound and broken, against plain walks over their slots and against sets of hours.

#include <bitset>
#include <map>
#include <random>
#include <string>

#include <algorithm>
#include "support/PlainBlock.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace boost::posix_time;
using namespace test_support;

// 0 to n - 1, the same in every run.
auto randomNumber() {
  return [random = std::mt19937(20240301)](int n) mutable {
    return static_cast<int>(random() % static_cast<unsigned>(n));
  };
}

TEST(TimeBlockModelTest, AnswersAndChangesAreThoseOfAPlainWalkWhateverTheSlotsAre) {
  BlockAndModel both(randomNumber());
  std::map<std::string, int> compared;
  for (int i = 0; i < 40000 && !HasFailure(); ++i) {
    both.start();
    for (int step = 0; step < 8; ++step) {
      SCOPED_TRACE(text(both.block()));
      both.step([&](const std::string& what, const std::string& plain, const std::string& found) {
        EXPECT_EQ(plain, found) << what;
        ++compared[what];
      });
    }
  }
  EXPECT_EQ(compared.size(), 16u);
  for (const auto& [what, count] : compared) EXPECT_GT(count, 5000) << what;
}

// A sound block is nothing but the hours it covers.
constexpr int kHours = 24 * 8;
using Hours = std::bitset<kHours>;

Hours between(int from, int to) {
  Hours covered;
  for (int i = from; i < to; ++i) covered.set(static_cast<std::size_t>(i));
  return covered;
}

Hours coveredBy(const TimeBlock& block) {
  Hours covered;
  const auto number = [](const ptime& time) {
    return static_cast<int>((time - ptime(kFirstDay)).total_seconds() / 3600);
  };
  for (const TimeSlot& slot : block.getBlocks()) {
    covered |= between(number(slot.time_begin), number(slot.time_end));
  }
  return covered;
}

TEST(TimeBlockModelTest, ASoundBlockIsTheSetOfItsHours) {
  auto number = randomNumber();
  TimeBlock block;
  TimeBlock earlier;
  Hours covered;
  for (int i = 0; i < 20000 && !HasFailure(); ++i) {
    const int first = number(kHours - 30);
    const int last = first + 1 + number(30);
    const ptime from = ptime(kFirstDay, hours(first));
    const ptime to = ptime(kFirstDay, hours(last));
    const TimeBlock change = number(4) == 0 ? earlier : TimeBlock(from, to);
    if (number(2) == 0) {
      block.addTimeBlocks(change);
      covered |= coveredBy(change);
    } else {
      block.removeTimeBlock(change);
      covered &= ~coveredBy(change);
    }
    if (number(10) == 0) earlier = block;
    SCOPED_TRACE(text(block));
    EXPECT_EQ(covered, coveredBy(block));
    for (std::size_t s = 1; s < block.getBlocks().size(); ++s) {
      EXPECT_LT(block.getBlocks()[s - 1].time_end, block.getBlocks()[s].time_begin);
    }
    EXPECT_EQ(covered & between(first, last), coveredBy(block.intersection(from, to)));
    const auto byDay = block.getStatisticByDay();
    for (int day = 0; day < kHours / 24; ++day) {
      const date d = kFirstDay + days(day);
      const auto entry = byDay.find(d);
      const auto worked = static_cast<long>((covered & between(24 * day, 24 * day + 24)).count());
      EXPECT_EQ(hours(worked), entry == byDay.end() ? hours(0) : entry->second);
      EXPECT_EQ(worked == 24, block.haveFullDay(d));
    }
  }
}

}  // namespace
