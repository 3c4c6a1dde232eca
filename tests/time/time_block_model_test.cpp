// Random blocks, sound and broken, against plain walks over their slots and against sets of hours.

#include <bitset>
#include <map>
#include <random>
#include <string>

#include <algorithm>
#include "libvarrow/time/TimeBlock.h"
#include "libvarrow/time/time_range.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using boost::gregorian::date;
using boost::gregorian::days;
using test_support::errorOf;
using namespace boost::posix_time;
using Slots = std::vector<TimeSlot>;

/// Thrown where the library ends the process.
struct Dies {};

void require(bool condition) {
  if (!condition) throw Dies();
}

TimeSlot slotOf(ptime begin, ptime end) {
  TimeSlot slot;
  slot.time_begin = begin;
  slot.time_end = end;
  return slot;
}

bool isPastMidnight(ptime time) {
  return time.time_of_day().total_seconds() > 0;
}

// Of an infinite time, so many that one more or less is no overflow.
long dayCount(const days& difference) {
  return std::clamp<long>(difference.days(), -1'000'000'000, 1'000'000'000);
}

// The operations of a block, each as one plain walk over all of its slots: what the library's
// faster ways must agree with, whatever the slots are.
struct PlainBlock {
  Slots slots;
  const Slots& getBlocks() const { return slots; }

  void addTimeBlock(ptime begin, ptime end) {
    if (end < begin) throw std::runtime_error(time2str(begin) + time2str(end));
    if (end == begin) return;
    const auto found =
        std::lower_bound(slots.begin(), slots.end(), begin, TimeSlot::CompareByTimeEnd);
    const auto index = static_cast<std::size_t>(found - slots.begin());
    require(index == 0 || slots[index - 1].time_end < begin);
    require(index == slots.size() || slots[index].time_end >= begin);
    slots.insert(found, slotOf(begin, end));
    while (index + 1 < slots.size()) {
      const TimeSlot current = slots[index];
      TimeSlot& next = slots[index + 1];
      if (current.time_end < next.time_begin) break;
      next.time_begin = std::min(next.time_begin, current.time_begin);
      next.time_end = std::max(next.time_end, current.time_end);
      slots.erase(slots.begin() + static_cast<std::ptrdiff_t>(index));
    }
  }

  void removeTimeBlock(ptime start, ptime end) {
    require(start <= end);
    Slots rest;
    for (const auto& [b, e] : slots) {
      if (!(b < end && start < e)) {
        rest.push_back(slotOf(b, e));
        continue;
      }
      if (b < start) rest.push_back(slotOf(b, start));
      if (end < e) rest.push_back(slotOf(end, e));
    }
    slots = rest;
  }

  bool hasIntersection(ptime start, ptime end) const {
    for (const auto& [b, e] : slots) {
      require(b <= e && start <= end);
      if (b < end && start < e) return true;
    }
    return false;
  }

  bool overlap(ptime start, ptime end) const {
    require(start <= end && !slots.empty());
    if (slots.front().time_begin >= end || start >= slots.back().time_end) return false;
    return std::any_of(slots.begin(), slots.end(), [&](const TimeSlot& slot) {
      return start < slot.time_end && slot.time_begin < end;
    });
  }

  PlainBlock intersection(ptime start, ptime end) const {
    PlainBlock result;
    if (!hasIntersection(start, end)) return result;
    for (const auto& [b, e] : slots) {
      require(b <= e);
      if (b < end && start < e) result.addTimeBlock(std::max(start, b), std::min(e, end));
    }
    return result;
  }

  bool haveBlock(ptime start, ptime end) const {
    require(start <= end);
    return std::any_of(slots.begin(), slots.end(), [&](const TimeSlot& slot) {
      return slot.time_begin <= start && end <= slot.time_end;
    });
  }

  bool haveBlock(ptime start, ptime end, time_duration length) const {
    return std::any_of(slots.begin(), slots.end(), [&](const TimeSlot& slot) {
      const ptime lo = std::max(start, slot.time_begin);
      const ptime hi = std::min(slot.time_end, end);
      return !(hi < lo) && !(hi - lo < length);
    });
  }

  time_duration getTotalDur() const {
    time_duration sum;
    for (const TimeSlot& slot : slots) sum += slot.dur();
    return sum;
  }

  time_duration getTotalDur(ptime start, ptime end) const {
    require(start < end);
    time_duration sum;
    auto slot = std::lower_bound(slots.begin(), slots.end(), start, TimeSlot::CompareByTimeEnd);
    for (; slot != slots.end() && !(end < slot->time_begin); ++slot) {
      const ptime x = std::max(slot->time_begin, start);
      const ptime y = std::min(slot->time_end, end);
      require(x <= y);
      sum += y - x;
    }
    return sum;
  }

  bool haveCompleteDays(ptime start, ptime end, int count) const {
    return std::any_of(slots.begin(), slots.end(), [&](const TimeSlot& slot) {
      const ptime lo = std::max(start, slot.time_begin);
      const ptime hi = std::min(slot.time_end, end);
      return count <= dayCount(hi.date() - lo.date()) - (isPastMidnight(lo) ? 1 : 0);
    });
  }

  std::vector<bool> getInvolveStatus(date from, date to) const {
    std::vector<bool> flags(static_cast<std::size_t>((to - from).days() + 1));
    for (const auto& [b, e] : slots) {
      require(b.date() <= e.date());
      for (date day = from; day <= to; day += days(1)) {
        if (b.date() <= day && day <= e.date()) {
          flags[static_cast<std::size_t>((day - from).days())] = true;
        }
      }
    }
    return flags;
  }

  std::vector<bool> getFullDayInvolveStatus(date from, date to) const {
    const long count = (to - from).days() + 1;
    std::vector<bool> flags(static_cast<std::size_t>(count));
    for (const auto& [b, e] : slots) {
      const long first = dayCount(b.date() - from) + (isPastMidnight(b) ? 1 : 0);
      const long last = dayCount(e.date() - from);
      if (!(first < last)) continue;
      if (first >= count) break;
      for (long i = std::max(first, 0L); i < std::min(last, count); ++i) {
        flags[static_cast<std::size_t>(i)] = true;
      }
    }
    return flags;
  }

  PlainBlock getBlockAtPos4Dur(ptime pos, time_duration length) const {
    PlainBlock result;
    auto slot = std::lower_bound(slots.begin(), slots.end(), pos, TimeSlot::CompareByTimeEnd);
    if (slot != slots.end() && length == time_duration()) {
      result.addTimeBlock(pos, pos + boost::posix_time::microseconds(1));
      return result;
    }
    for (; slot != slots.end(); ++slot) {
      if (length == time_duration()) return result;
      const ptime lo = std::max(pos, slot->time_begin);
      pos = std::min(lo + length, slot->time_end);
      result.addTimeBlock(lo, pos);
      length -= pos - lo;
    }
    return {};
  }

  PlainBlock getBlockAtPos4DurByEnd(ptime pos, time_duration length) const {
    PlainBlock result;
    auto slot = std::lower_bound(slots.begin(), slots.end(), pos, TimeSlot::CompareByTimeEnd);
    if (slot == slots.begin()) return result;
    ptime hi = std::min((--slot)->time_end, pos);
    while (true) {
      if (slot->time_begin <= hi - length) {
        result.addTimeBlock(hi - length, hi);
        return result;
      }
      result.addTimeBlock(slot->time_begin, hi);
      if (slot == slots.begin()) return {};
      length -= hi - slot->time_begin;
      hi = (--slot)->time_end;
    }
  }

  void addTimeBlocks(const PlainBlock& others) {
    for (const auto& [b, e] : others.slots) addTimeBlock(b, e);
  }
  void removeTimeBlock(const PlainBlock& others) {
    for (const auto& [b, e] : others.slots) removeTimeBlock(b, e);
  }
};

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

template <class Block>
std::string text(const Block& block) {
  std::string text = "{" + TimeBlock(block.getBlocks()).dumpAsString() + "}";
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
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
    const Slots others = random.slots();
    const ptime from = random.time();
    const ptime to = random.time();
    const time_duration length = hours(6 * random.number(14) - 3);
    const date day = kFirstDay + days(random.number(8));
    const date lastDay = day + days(random.number(4));
    const int dayCount = random.number(5) - 1;
    SCOPED_TRACE(text(TimeBlock(slots)) + " and " + text(TimeBlock(others)) + " from " +
                 time2str(from) + " to " + time2str(to) + " for " + time2str(length));
    const auto compare = [&](const char* what, auto query) {
      SCOPED_TRACE(what);
      compared[what] += expectSame(slots, query);
    };
    const auto change = [&](const char* what, auto make) {
      compare(what, [&](auto& block) { return make(block), block; });
    };
    const auto another = [&](const auto& like) { return std::decay_t<decltype(like)>{others}; };
    change("add", [&](auto& b) { b.addTimeBlock(from, to); });
    change("remove", [&](auto& b) { b.removeTimeBlock(from, to); });
    change("add many", [&](auto& b) { b.addTimeBlocks(another(b)); });
    change("remove many", [&](auto& b) { b.removeTimeBlock(another(b)); });
    compare("hasIntersection", [&](auto& b) { return b.hasIntersection(from, to); });
    compare("overlap", [&](auto& b) { return b.overlap(from, to); });
    compare("intersection", [&](auto& b) { return b.intersection(from, to); });
    compare("haveBlock", [&](auto& b) { return b.haveBlock(from, to); });
    compare("haveBlock for", [&](auto& b) { return b.haveBlock(from, to, length); });
    compare("getTotalDur", [&](auto& b) { return b.getTotalDur(); });
    compare("getTotalDur in", [&](auto& b) { return b.getTotalDur(from, to); });
    compare("complete days", [&](auto& b) { return b.haveCompleteDays(from, to, dayCount); });
    compare("touched days", [&](auto& b) { return b.getInvolveStatus(day, lastDay); });
    compare("full days", [&](auto& b) { return b.getFullDayInvolveStatus(day, lastDay); });
    compare("after", [&](auto& b) { return b.getBlockAtPos4Dur(from, length); });
    compare("before", [&](auto& b) { return b.getBlockAtPos4DurByEnd(from, length); });
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
