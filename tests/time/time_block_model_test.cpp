// Random changes and queries of a TimeBlock, in order and out of order, against reference models.
#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "libvarrow/time/Timeline.h"
#include "support/HourSet.h"
#include "support/blocks.h"
#include "support/support.h"

namespace {

using namespace test_support;
using libvarrow::TimeBlock;
using libvarrow::Timeline;
using libvarrow::TimeSlot;
using Slots = std::vector<TimeSlot>;

// Texts to the microsecond, which the library's texts leave out.
std::string text(const Slots& slots) {
  std::string text;
  for (const auto& [begin, end] : slots) {
    text += '[' + to_iso_string(begin) + ',' + to_iso_string(end) + ']';
  }
  return text;
}
template <class Block>
auto text(const Block& block) -> decltype(text(block.getBlocks())) {
  return text(block.getBlocks());
}
std::string text(const time_duration& duration) {
  return to_simple_string(duration);
}
std::string text(const std::optional<ptime>& time) {
  return time ? to_iso_string(*time) : "nothing";
}
std::string text(const std::map<date, time_duration>& times) {
  std::string text;
  for (const auto& [day, time] : times) text += to_iso_string(day) + '=' + to_simple_string(time);
  return text;
}
std::string text(bool value) {
  return value ? "yes" : "no";
}

// A block that is asked and changed at random.
//
// A set of hours judges a block that is sorted and disjoint. Otherwise the answer must be the sum
// of the answers of blocks of one slot. Changes of many slots must be those of single changes.
class BlockAndModel {
 public:
  const TimeBlock& block() const { return block_; }
  // Returns how often each question was compared.
  const std::map<std::string, int>& compared() const { return compared_; }

  // Starts with new slots, which may touch or be empty, unsorted or reversed.
  void start() {
    isWild_ = number(4) == 0;
    range_ = number(4) == 0 ? 4 : 40;
    block_ = TimeBlock(slots());
  }

  // Compares the answers of a timeline with those of its slots as a block.
  void compareTimeline() {
    if (!areForwards(block_.getBlocks())) return;
    TimeBlock united;
    united.addTimeBlocks(block_);
    const Timeline timeline(block_);
    const TimeBlock taken = timeline.toTimeBlock();
    EXPECT_TRUE(taken == block_ || taken == united) << taken;
    const ptime from = time(), to = time();
    if (!(from < to)) return;
    EXPECT_EQ(answersOf(taken, from, to), answersOf(timeline, from, to));
    const bool isAddition = number(2) == 0;
    const auto changed = [&](auto slots) {
      isAddition ? slots.addTimeBlock(from, to) : slots.removeTimeBlock(from, to);
      return slots;
    };
    EXPECT_EQ(changed(taken), changed(timeline).toTimeBlock());
  }

  // Asks one of the questions, and returns how many there are. Leaves out questions that abort the
  // process or that no model answers.
  std::size_t step() {
    const Slots own = block_.getBlocks(), changes = number(8) == 0 ? own : slots();
    const ptime from = time(), to = time();
    const bool isLong = isWild_ && number(8) == 0;
    const time_duration length = isLong ? from - to : time_duration(3 * (number(30) - 4), 0, 0);
    const int daysAfter = number(4), count = number(5) - 1;
    const auto daysBefore = static_cast<std::size_t>(number(4));
    const date day = kFirstDay + days(number(12)), first = day - days(int(daysBefore)),
               last = day + days(daysAfter);
    const bool isApart = areApart(own), isSound = isApart && !isWild_;
    const bool isWindow = from<to, isPositive = length> time_duration();
    const bool isWork = length >= time_duration();
    const bool isForwards = from <= to && areForwards(own);
    const bool isInside =
        isWindow && !own.empty() && block_.beginTime() < to && from < block_.endTime();

    const auto compare = [&](const char* what, bool isByHours, bool isForSlots, auto query) {
      return [=, &own] {
        if (!isByHours && !isForSlots) return;
        HourSet hourSet(isByHours ? own : Slots());
        const std::string expected = isByHours ? answerOf(hourSet, query) : sumOver(own, query);
        same(what, expected, answerOf(block_, query));
      };
    };
    const auto ask = [&](const char* what, bool isForHours, bool isForSlots, auto query) {
      return compare(what, isSound && isForHours, isForSlots, query);
    };
    // The answer is that of the block in order.
    const auto askUnion = [&](const char* what, bool isDefined, auto query) {
      return compare(what, isDefined && !isWild_ && areForwards(own), false, query);
    };
    const auto change = [&](const char* what, bool isDefined, auto single, auto many) {
      return [=, &own, &changes] {
        if (!isDefined) return;
        TimeBlock copy = block_;
        const TimeBlock others(changes);
        const std::string expected = answerOf(copy, [&](TimeBlock& block) {
          for (const auto& [begin, end] : changes) single(block, begin, end);
          return block;
        });
        same(what, expected, answerOf(block_, [&](TimeBlock& block) {
               return many(block, text(changes) == text(own) ? block : others), block;
             }));
      };
    };
    return askOneOf(
        ask("add", true, false, [=](auto& b) { return b.addTimeBlock(from, to), b; }),
        ask("remove", isWindow, from <= to,
            [=](auto& b) { return b.removeTimeBlock(from, to), b; }),
        change(
            "add many", true, [](auto& b, ptime s, ptime e) { b.addTimeBlock(s, e); },
            [](auto& b, auto& others) { b.addTimeBlocks(others); }),
        change(
            "remove many", areForwards(changes),
            [](auto& b, ptime s, ptime e) { b.removeTimeBlock(s, e); },
            [](auto& b, auto& others) { b.removeTimeBlock(others); }),
        ask("shared", isWindow, isForwards, [=](auto& b) { return b.hasIntersection(from, to); }),
        ask("overlap", isInside, isInside, [=](auto& b) { return b.overlap(from, to); }),
        ask("intersection", from <= to, isForwards && isApart,
            [=](auto& b) { return b.intersection(from, to); }),
        ask("contained", from <= to, from <= to, [=](auto& b) { return b.haveBlock(from, to); }),
        ask("room", true, true, [=](auto& b) { return b.haveBlock(from, to, length); }),
        ask("total", true, false, [](auto& b) { return b.getTotalDur(); }),
        ask("total in", isWindow, false, [=](auto& b) { return b.getTotalDur(from, to); }),
        ask("days", count > 0, true, [=](auto& b) { return b.haveCompleteDays(from, to, count); }),
        ask("touched", true, areForwards(own),
            [=](auto& b) { return bool{b.getInvolveStatus(first, last).at(daysBefore)}; }),
        ask("full", true, std::is_sorted(own.begin(), own.end()),
            [=](auto& b) { return bool{b.getFullDayInvolveStatus(first, last).at(daysBefore)}; }),
        ask("full day", true, true, [=](auto& b) { return b.haveFullDay(day); }),
        ask("time by day", true, false, [](auto& b) { return b.getStatisticByDay(); }),
        ask("after", isPositive, false, [=](auto& b) { return b.getBlockAtPos4Dur(from, length); }),
        ask("before", isPositive, false,
            [=](auto& b) { return b.getBlockAtPos4DurByEnd(from, length); }),
        askUnion("work end", isWork, [=](auto& b) { return b.workEnd(from, length); }),
        askUnion("work start", isWork, [=](auto& b) { return b.workStart(from, length); }),
        askUnion("next", true, [=](auto& b) { return b.nextWorking(from); }),
        askUnion("last", true, [=](auto& b) { return b.lastWorking(from); }),
        askUnion("gaps", from <= to, [=](auto& b) { return b.gaps(from, to); }),
        askUnion("common", areForwards(changes), [&changes](auto& b) {
          return b.intersection(std::decay_t<decltype(b)>(changes));
        }));
  }

 private:
  void same(const char* what, const std::string& expected, const std::string& found) {
    EXPECT_EQ(expected, found) << what;
    ++compared_[what];
  }

  template <class... Questions>
  std::size_t askOneOf(Questions... questions) {
    int others = number(static_cast<int>(sizeof...(questions)));
    ((others-- == 0 ? questions() : void()), ...);
    return sizeof...(questions);
  }

  template <class Block, class Query>
  static std::string answerOf(Block& block, Query query) {
    try {
      return text(query(block));
    } catch (const std::exception& error) {
      return error.what() + (" leaves " + text(block));
    }
  }

  // The answer "yes" of any slot, or the pieces of all slots.
  template <class Query>
  static std::string sumOver(const Slots& slots, Query query) {
    bool any = false;
    std::string pieces;
    constexpr bool kIsYesOrNo = std::is_same_v<decltype(query(std::declval<TimeBlock&>())), bool>;
    for (const TimeSlot& slot : slots) {
      TimeBlock one = blockOf({slot});
      const std::string answer = text(query(one));
      any = any || answer == "yes";
      pieces += answer;
    }
    return kIsYesOrNo ? text(any) : pieces;
  }

  // Returns one of 0 to limit - 1.
  int number(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  static bool areForwards(const Slots& slots) {
    return std::none_of(slots.begin(), slots.end(),
                        [](const TimeSlot& slot) { return slot.time_end < slot.time_begin; });
  }
  // Returns whether the slots are sorted and neither empty nor touching.
  static bool areApart(const Slots& slots) {
    const TimeSlot* before = nullptr;
    for (const TimeSlot& slot : slots) {
      if (!(slot.time_begin < slot.time_end)) return false;
      if (before != nullptr && !(before->time_end < slot.time_begin)) return false;
      before = &slot;
    }
    return true;
  }

  // Few different times, so that slots often touch. Wild ones may be special, far, or close to
  // midnight.
  ptime time() {
    using namespace boost::date_time;
    const ptime near = at(6 * number(range_));
    const int kind = isWild_ ? number(32) : 8;
    constexpr special_values kSpecial[] = {not_a_date_time, pos_infin, neg_infin, min_date_time,
                                           max_date_time};
    if (kind < 5) return ptime(kSpecial[kind]);
    if (kind == 5) return at(1e5 * number(600));
    return kind < 8 ? near + milliseconds(1000 * kind - 6500) : near;
  }

  Slots slots() {
    Slots made(static_cast<std::size_t>(number(10)));
    std::vector<ptime> times(2 * made.size());
    std::generate(times.begin(), times.end(), [&] { return time(); });
    const int kind = number(6);
    if (kind < 3) std::sort(times.begin(), times.end());
    for (std::size_t i = 0; i < made.size(); ++i) {
      made[i] = slotOf(times[2 * i], times[2 * i + 1]);
      if (kind < 5 && made[i].time_end < made[i].time_begin) {
        std::swap(made[i].time_begin, made[i].time_end);
      }
    }
    if (number(2) == 0) std::sort(made.begin(), made.end());
    return made;
  }

  std::mt19937 random_{20240301};
  bool isWild_ = false;
  int range_ = 40;
  TimeBlock block_;
  std::map<std::string, int> compared_;
};

TEST(TimeBlockModelTest, AnswersAndChangesAreThoseOfTheModels) {
  BlockAndModel both;
  std::size_t questions = 0;
  for (int i = 0; i < 10000 && !HasFailure(); ++i) {
    both.start();
    both.compareTimeline();
    for (int step = 0; step < 8; ++step) {
      SCOPED_TRACE(text(both.block()));
      questions = both.step();
    }
  }
  EXPECT_EQ(questions, both.compared().size());
  for (const auto& [what, count] : both.compared()) EXPECT_LT(300, count) << what;
}

}  // namespace
