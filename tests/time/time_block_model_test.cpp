// Random blocks, sound and broken, against plain walks over their slots and against sets of hours.
#include <gtest/gtest.h>

#include <bitset>
#include <functional>
#include <random>
#include <string>

#include "time/plain_block.h"

namespace {

using namespace libvarrow;
using boost::gregorian::date;
using boost::posix_time::hours;
using boost::posix_time::milliseconds;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using plain_block::slotOf;
using plain_block::Slots;

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

std::string text(const Slots& slots) {
  std::string text = "{" + TimeBlock(slots).dumpAsString() + "}";
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}
std::string text(const TimeBlock& block) {
  return text(block.getBlocks());
}
std::string text(const time_duration& duration) {
  return time2str(duration);
}
std::string text(const std::vector<bool>& flags) {
  std::string text;
  for (const bool flag : flags) text += flag ? '1' : '0';
  return text;
}
std::string text(bool value) {
  return value ? "yes" : "no";
}

// Compares where the plain walk does not end the process; returns whether it did not.
template <class Plain, class Library>
bool expectSame(Plain plain, Library library, const char* what) {
  std::string expected;
  try {
    expected = text(plain());
  } catch (const std::runtime_error& error) {
    expected = error.what();
  } catch (const plain_block::Dies&) {
    return false;
  }
  std::string found;
  try {
    found = text(library());
  } catch (const std::runtime_error& error) {
    found = error.what();
  }
  EXPECT_EQ(expected, found) << what;
  return true;
}

template <class Change>
Slots changed(Slots slots, Change change) {
  change(slots);
  return slots;
}

template <class Change>
TimeBlock changedBlock(const Slots& slots, Change change) {
  TimeBlock block(slots);
  change(block);
  return block;
}

TEST(TimeBlockModelTest, ChangesAreThoseOfAPlainWalkWhateverTheSlotsAre) {
  RandomBlocks random;
  int compared = 0;
  for (int i = 0; i < 30000 && !HasFailure(); ++i) {
    const Slots slots = random.slots();
    const Slots others = random.slots();
    const TimeBlock other(others);
    const ptime from = random.time();
    const ptime to = random.time();
    SCOPED_TRACE(text(slots) + " and " + text(others) + " from " + time2str(from) + " to " +
                 time2str(to));
    const auto plainly = [&](auto change) { return [=] { return changed(slots, change); }; };
    const auto really = [&](auto change) { return [=] { return changedBlock(slots, change); }; };
    compared += expectSame(plainly([&](Slots& s) { plain_block::add(s, from, to); }),
                           really([&](TimeBlock& b) { b.addTimeBlock(from, to); }), "add");
    compared += expectSame(plainly([&](Slots& s) { plain_block::remove(s, from, to); }),
                           really([&](TimeBlock& b) { b.removeTimeBlock(from, to); }), "remove");
    compared += expectSame(plainly([&](Slots& s) {
                             for (const auto& [b, e] : others) plain_block::add(s, b, e);
                           }),
                           really([&](TimeBlock& b) { b.addTimeBlocks(other); }), "addTimeBlocks");
    compared += expectSame(plainly([&](Slots& s) {
                             for (const auto& [b, e] : others) plain_block::remove(s, b, e);
                           }),
                           really([&](TimeBlock& b) { b.removeTimeBlock(other); }), "remove many");
  }
  EXPECT_GT(compared, 60000);
}

TEST(TimeBlockModelTest, QueriesAreThoseOfAPlainWalkWhateverTheSlotsAre) {
  RandomBlocks random;
  int compared = 0;
  for (int i = 0; i < 20000 && !HasFailure(); ++i) {
    const Slots slots = random.slots();
    TimeBlock block(slots);
    const ptime from = random.time();
    const ptime to = random.time();
    const time_duration length = hours(6 * random.number(14) - 3);
    const date day = kFirstDay + boost::gregorian::days(random.number(8));
    const date lastDay = day + boost::gregorian::days(random.number(4));
    const int dayCount = random.number(5) - 1;
    SCOPED_TRACE(text(slots) + " from " + time2str(from) + " to " + time2str(to) + " for " +
                 time2str(length));
    const auto compare = [&](auto plain, auto library, const char* what) {
      compared += expectSame(plain, library, what);
    };
    compare([&] { return plain_block::meets(slots, from, to); },
            [&] { return block.hasIntersection(from, to); }, "hasIntersection");
    compare([&] { return plain_block::overlaps(slots, from, to); },
            [&] { return block.overlap(from, to); }, "overlap");
    compare([&] { return plain_block::inside(slots, from, to); },
            [&] { return block.intersection(from, to); }, "intersection");
    compare([&] { return plain_block::contains(slots, from, to); },
            [&] { return block.haveBlock(from, to); }, "haveBlock");
    compare([&] { return plain_block::containsLength(slots, from, to, length); },
            [&] { return block.haveBlock(from, to, length); }, "haveBlock with length");
    compare([&] { return plain_block::total(slots); }, [&] { return block.getTotalDur(); },
            "getTotalDur");
    compare([&] { return plain_block::total(slots, from, to); },
            [&] { return block.getTotalDur(from, to); }, "getTotalDur of a window");
    compare([&] { return plain_block::hasCompleteDays(slots, from, to, dayCount); },
            [&] { return block.haveCompleteDays(from, to, dayCount); }, "haveCompleteDays");
    compare([&] { return plain_block::touchedDays(slots, day, lastDay); },
            [&] { return block.getInvolveStatus(day, lastDay); }, "getInvolveStatus");
    compare([&] { return plain_block::fullDays(slots, day, lastDay); },
            [&] { return block.getFullDayInvolveStatus(day, lastDay); }, "getFullDayInvolveStatus");
    compare([&] { return plain_block::after(slots, from, length); },
            [&] { return block.getBlockAtPos4Dur(from, length); }, "getBlockAtPos4Dur");
    compare([&] { return plain_block::before(slots, from, length); },
            [&] { return block.getBlockAtPos4DurByEnd(from, length); }, "getBlockAtPos4DurByEnd");
  }
  EXPECT_GT(compared, 180000);
}

// A sound block is nothing but the hours it covers.
constexpr int kHours = 24 * 8;
using Hours = std::bitset<kHours>;

ptime hour(int number) {
  return ptime(kFirstDay, hours(number));
}

Hours between(int from, int to) {
  Hours covered;
  for (int i = from; i < to; ++i) covered.set(static_cast<std::size_t>(i));
  return covered;
}

Hours coveredBy(const TimeBlock& block) {
  Hours covered;
  const auto number = [](const ptime& time) {
    return static_cast<int>((time - hour(0)).total_seconds() / 3600);
  };
  for (const TimeSlot& slot : block.getBlocks()) {
    covered |= between(number(slot.time_begin), number(slot.time_end));
  }
  return covered;
}

TEST(TimeBlockModelTest, ASoundBlockIsTheSetOfItsHours) {
  std::mt19937 random(7);
  const auto number = [&](int count) { return static_cast<int>(random() % unsigned(count)); };
  TimeBlock block;
  TimeBlock earlier;
  Hours covered;
  for (int i = 0; i < 20000 && !HasFailure(); ++i) {
    const int from = number(kHours - 30);
    const int to = from + 1 + number(30);
    const Hours window = between(from, to);
    switch (number(6)) {
      case 0:
        block.addTimeBlocks(earlier);
        covered |= coveredBy(earlier);
        break;
      case 1:
        block.removeTimeBlock(earlier);
        covered &= ~coveredBy(earlier);
        break;
      case 2:
        earlier = block;
        block.removeTimeBlock(hour(0), hour(kHours / 2));
        covered &= ~between(0, kHours / 2);
        break;
      case 3:
        block.addTimeBlock(hour(from), hour(to));
        covered |= window;
        break;
      default:
        block.removeTimeBlock(hour(from), hour(to));
        covered &= ~window;
    }
    SCOPED_TRACE(text(block));
    EXPECT_EQ(covered, coveredBy(block));
    for (std::size_t s = 1; s < block.getBlocks().size(); ++s) {
      EXPECT_LT(block.getBlocks()[s - 1].time_end, block.getBlocks()[s].time_begin);
    }
    const Hours inWindow = covered & window;
    EXPECT_EQ(hours(static_cast<long>(covered.count())), block.getTotalDur());
    EXPECT_EQ(hours(static_cast<long>(inWindow.count())), block.getTotalDur(hour(from), hour(to)));
    EXPECT_EQ(inWindow, coveredBy(block.intersection(hour(from), hour(to))));
    EXPECT_EQ(inWindow.any(), block.hasIntersection(hour(from), hour(to)));
    EXPECT_EQ(inWindow == window, block.haveBlock(hour(from), hour(to)));
    const auto byDay = block.getStatisticByDay();
    for (int day = 0; day < kHours / 24; ++day) {
      const Hours today = between(24 * day, 24 * day + 24);
      const date d = kFirstDay + boost::gregorian::days(day);
      const auto entry = byDay.find(d);
      const long worked = static_cast<long>((covered & today).count());
      EXPECT_EQ(hours(worked), entry == byDay.end() ? hours(0) : entry->second);
      EXPECT_EQ(worked == 24, block.haveFullDay(d));
      EXPECT_EQ(worked == 24, block.getFullDayInvolveStatus(d, d)[0]);
    }
  }
}

}  // namespace
