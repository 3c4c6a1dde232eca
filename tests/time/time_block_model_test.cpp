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

const date kFirstDay(2024, 3, 1);

// Few different times, so that they often touch, and some that are special or just past midnight.
class RandomBlocks {
 public:
  int number(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

  ptime time() {
    if (hasSpecialTimes && number(12) == 0) {
      using namespace boost::date_time;
      return ptime(number(2) == 0 ? not_a_date_time : number(2) == 0 ? pos_infin : neg_infin);
    }
    const time_duration justPast = number(8) == 0 ? milliseconds(500) : milliseconds(0);
    return ptime(kFirstDay, hours(6 * number(40))) + justPast;
  }

  Slots slots() {
    hasSpecialTimes = number(4) == 0;
    Slots made(static_cast<std::size_t>(number(10)));
    if (number(2) == 0) {
      // In order; whether touching and empty ones are among them is left to chance.
      std::vector<ptime> times;
      for (std::size_t i = 0; i < 2 * made.size(); ++i) times.push_back(time());
      std::sort(times.begin(), times.end());
      for (std::size_t i = 0; i < made.size(); ++i) {
        made[i] = slotOf(times[2 * i], times[2 * i + 1]);
      }
      return made;
    }
    const bool mayBeReversed = number(3) == 0;
    for (TimeSlot& slot : made) {
      slot = slotOf(time(), time());
      if (!mayBeReversed && slot.time_end < slot.time_begin) {
        std::swap(slot.time_begin, slot.time_end);
      }
    }
    if (number(2) == 0) std::sort(made.begin(), made.end());
    return made;
  }

  bool hasSpecialTimes = false;

 private:
  std::mt19937 random_{20240301};
};

// Compares where the plain walk does not end the process; returns whether it did not.
template <class Query>
bool expectSame(const Slots& slots, Query query) {
  std::string answer;
  const auto ask = [&](auto block) { answer = text(query(block)); };
  std::string plain;
  try {
    plain = errorOf([&] { ask(PlainBlock{slots}); }) + answer;
  } catch (const Dies&) {
    return false;
  }
  answer.clear();
  const std::string found = errorOf([&] { ask(TimeBlock(slots)); }) + answer;
  EXPECT_EQ(plain, found);
  return true;
}

TEST(TimeBlockModelTest, AnswersAndChangesAreThoseOfAPlainWalkWhateverTheSlotsAre) {
  RandomBlocks random;
  std::map<std::string, int> compared;
  for (int i = 0; i < 20000 && !HasFailure(); ++i) {
    const Slots slots = random.slots();
    BlockArguments arguments{random.slots(),
                             random.time(),
                             random.time(),
                             hours(6 * random.number(14) - 3),
                             kFirstDay + days(random.number(8)),
                             date(),
                             random.number(5) - 1};
    arguments.lastDay = arguments.day + days(random.number(4));
    SCOPED_TRACE(text(TimeBlock(slots)) + " and " + text(TimeBlock(arguments.others)) + " from " +
                 time2str(arguments.from) + " to " + time2str(arguments.to) + " for " +
                 time2str(arguments.length));
    forEachBlockOperation(arguments, [&](const char* what, auto query) {
      SCOPED_TRACE(what);
      compared[what] += expectSame(slots, query);
    });
  }
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
  RandomBlocks random;
  TimeBlock block;
  TimeBlock earlier;
  Hours covered;
  for (int i = 0; i < 20000 && !HasFailure(); ++i) {
    const int first = random.number(kHours - 30);
    const int last = first + 1 + random.number(30);
    const ptime from = ptime(kFirstDay, hours(first));
    const ptime to = ptime(kFirstDay, hours(last));
    const TimeBlock change = random.number(4) == 0 ? earlier : TimeBlock(from, to);
    if (random.number(2) == 0) {
      block.addTimeBlocks(change);
      covered |= coveredBy(change);
    } else {
      block.removeTimeBlock(change);
      covered &= ~coveredBy(change);
    }
    if (random.number(10) == 0) earlier = block;
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
