// The plain model of a TimeBlock, and random operations in which the two are compared.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "libvarrow/time/time_range.h"
#include "support/blocks.h"

namespace test_support {

using boost::gregorian::date;
using boost::gregorian::days;
using boost::posix_time::hours;
using boost::posix_time::milliseconds;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using libvarrow::time2str;
using libvarrow::TimeBlock;
using libvarrow::TimeSlot;
using Slots = std::vector<TimeSlot>;

/// Thrown where the library ends the process.
struct Dies {};

inline void require(bool condition) {
  if (!condition) throw Dies();
}

inline bool isPastMidnight(ptime time) {
  return time.time_of_day().total_seconds() > 0;
}

// Of an infinite time, so many that one more or less is no overflow.
inline long dayCount(const days& difference) {
  return std::clamp<long>(difference.days(), -1'000'000'000, 1'000'000'000);
}

// A sum outside the calendar is infinite.
inline ptime shifted(ptime time, time_duration length) {
  if (time.is_special() || length.is_special()) return time + length;
  const ptime earliest(boost::date_time::min_date_time), latest(boost::date_time::max_date_time);
  if (latest - time < length) return boost::date_time::pos_infin;
  return length < earliest - time ? ptime(boost::date_time::neg_infin) : time + length;
}

// The operations of a block, each as one plain walk over all of its slots: what the library's
// faster ways must agree with, whatever the slots are.
struct PlainBlock {
  Slots slots;
  const Slots& getBlocks() const { return slots; }

  Slots::const_iterator endingFrom(ptime time) const {
    return std::lower_bound(slots.begin(), slots.end(), time, TimeSlot::CompareByTimeEnd);
  }

  void addTimeBlock(ptime begin, ptime end) {
    if (end < begin) throw std::runtime_error(time2str(begin) + time2str(end));
    if (end == begin) return;
    auto slot = endingFrom(begin);
    require(slot == slots.begin() || std::prev(slot)->time_end < begin);
    require(slot == slots.end() || begin <= slot->time_end);
    for (; slot != slots.end() && slot->time_begin <= end; slot = slots.erase(slot)) {
      begin = std::min(begin, slot->time_begin);
      end = std::max(end, slot->time_end);
    }
    slots.insert(slot, slotOf(begin, end));
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

  template <class Predicate>
  bool any(Predicate predicate) const {
    return std::any_of(slots.begin(), slots.end(), predicate);
  }

  // Of some slot, cut to a window.
  template <class Predicate>
  bool anyIn(ptime start, ptime end, Predicate predicate) const {
    return any([&](const TimeSlot& slot) {
      return predicate(std::max(start, slot.time_begin), std::min(slot.time_end, end));
    });
  }

  bool hasIntersection(ptime start, ptime end) const {
    return any([&](const TimeSlot& s) {
      require(s.time_begin <= s.time_end && start <= end);
      return s.time_begin < end && start < s.time_end;
    });
  }

  bool overlap(ptime start, ptime end) const {
    require(start <= end && !slots.empty());
    if (slots.front().time_begin >= end || start >= slots.back().time_end) return false;
    return any([&](const TimeSlot& s) { return start < s.time_end && s.time_begin < end; });
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
    return any([&](const TimeSlot& s) { return s.time_begin <= start && end <= s.time_end; });
  }

  bool haveBlock(ptime start, ptime end, time_duration length) const {
    return anyIn(start, end, [&](ptime lo, ptime hi) { return lo <= hi && length <= hi - lo; });
  }

  bool haveFullDay(date d) const { return haveBlock(ptime(d), ptime(d + days(1))); }

  time_duration getTotalDur() const {
    time_duration sum;
    for (const TimeSlot& slot : slots) sum += slot.dur();
    return sum;
  }

  time_duration getTotalDur(ptime start, ptime end) const {
    require(start < end);
    time_duration sum;
    for (auto slot = endingFrom(start); slot != slots.end() && slot->time_begin <= end; ++slot) {
      const ptime x = std::max(slot->time_begin, start), y = std::min(slot->time_end, end);
      require(x <= y);
      sum += y - x;
    }
    return sum;
  }

  bool haveCompleteDays(ptime start, ptime end, int count) const {
    return anyIn(start, end, [&](ptime lo, ptime hi) {
      return count <= dayCount(hi.date() - lo.date()) - (isPastMidnight(lo) ? 1 : 0);
    });
  }

  std::vector<bool> getInvolveStatus(date from, date to) const {
    std::vector<bool> flags;
    require(!any([](const TimeSlot& s) { return s.time_end.date() < s.time_begin.date(); }));
    for (date d = from; d <= to; d += days(1)) {
      flags.push_back(any(
          [&](const TimeSlot& s) { return s.time_begin.date() <= d && d <= s.time_end.date(); }));
    }
    return flags;
  }

  std::vector<bool> getFullDayInvolveStatus(date from, date to) const {
    std::vector<bool> flags(static_cast<std::size_t>((to - from).days() + 1));
    const long count = static_cast<long>(flags.size());
    for (const auto& [b, e] : slots) {
      const long first = dayCount(b.date() - from) + (isPastMidnight(b) ? 1 : 0);
      const long last = dayCount(e.date() - from);
      if (first < last && first >= count) break;
      for (long i = 0; i < count; ++i) {
        if (first <= i && i < last) flags[static_cast<std::size_t>(i)] = true;
      }
    }
    return flags;
  }

  PlainBlock getBlockAtPos4Dur(ptime pos, time_duration length) const {
    PlainBlock result;
    auto slot = endingFrom(pos);
    if (slot != slots.end() && length == time_duration()) {
      result.addTimeBlock(pos, shifted(pos, boost::posix_time::microseconds(1)));
      return result;
    }
    for (; slot != slots.end(); ++slot) {
      if (length == time_duration()) return result;
      const ptime lo = std::max(pos, slot->time_begin);
      pos = std::min(shifted(lo, length), slot->time_end);
      result.addTimeBlock(lo, pos);
      length -= pos - lo;
    }
    return {};
  }

  PlainBlock getBlockAtPos4DurByEnd(ptime pos, time_duration length) const {
    PlainBlock result;
    auto slot = endingFrom(pos);
    if (slot == slots.begin()) return result;
    ptime hi = std::min((--slot)->time_end, pos);
    for (;; hi = (--slot)->time_end) {
      const ptime lo = std::max(shifted(hi, -length), slot->time_begin);
      result.addTimeBlock(lo, hi);
      if (shifted(hi, -length) == lo) return result;
      if (slot == slots.begin()) return {};
      length -= hi - lo;
    }
  }

  std::map<date, time_duration> getStatisticByDay() const {
    std::map<date, time_duration> sums;
    for (const auto& [b, e] : slots) {
      sums[b.date()] += hours(b.date() == e.date() ? 0 : 24) - b.time_of_day();
      sums[e.date()] += e.time_of_day();
      for (date day = b.date() + days(1); day < e.date(); day += days(1)) sums[day] += hours(24);
    }
    return sums;
  }

  // By value, as a block may be added to itself.
  void addTimeBlocks(PlainBlock others) {
    for (const auto& [b, e] : others.slots) addTimeBlock(b, e);
  }
  void removeTimeBlock(PlainBlock others) {
    for (const auto& [b, e] : others.slots) removeTimeBlock(b, e);
  }
};

// To the microsecond, which the library's own text leaves out.
template <class Block>
inline std::string text(const Block& block) {
  std::string text;
  for (const auto& [b, e] : block.getBlocks()) {
    text += '[' + to_iso_string(b) + ',' + to_iso_string(e) + ']';
  }
  return text;
}
inline std::string text(const time_duration& duration) {
  return to_simple_string(duration);
}
inline std::string text(const std::vector<bool>& flags) {
  return std::string(flags.begin(), flags.end());
}
inline std::string text(const std::map<date, time_duration>& sums) {
  std::string text;
  for (const auto& [day, sum] : sums)
    text += to_iso_string(day) + '=' + to_simple_string(sum) + ' ';
  return text;
}
inline std::string text(bool value) {
  return value ? "yes" : "no";
}

/// A calendar and its plain model, which are asked and changed alike with what `number(n)`, one of
/// 0 to n - 1, gives.
template <class Number>
class BlockAndModel {
 public:
  explicit BlockAndModel(Number number) : number_(number) {}

  const PlainBlock& plain() const { return plain_; }
  TimeBlock& block() { return block_; }

  void start(const Slots& slots) {
    plain_.slots = slots;
    block_ = TimeBlock(slots);
  }

  /// Starts with new slots: in order, touching and empty ones among them, or in none, or reversed.
  void start() {
    isWild_ = number_(4) == 0;
    range_ = number_(4) == 0 ? 4 : 40;
    start(slots());
  }

  /// One operation on both; `same(what, plain text, text)` gets its answers and what it leaves. One
  /// that ends the process is kept from the library.
  template <class Same>
  void step(Same same) {
    const Slots others = slots();
    const ptime from = time(), to = time();
    const bool isLong = isWild_ && number_(8) == 0;
    const time_duration length = isLong ? from - to : hours(3 * (number_(30) - 4));
    const date day = kFirstDay + days(number_(12)), lastDay = day + days(number_(6));
    const int count = number_(5) - 1;
    int skipped = number_(20);
    const auto ask = [&](const char* what, auto query) {
      if (skipped-- == 0) compare(what, query, same);
    };
    const auto change = [&](const char* what, auto make) {
      ask(
          what, [&](auto& b) -> auto& { return make(b), b; });
    };
    const auto another = [&](const auto& like) { return std::decay_t<decltype(like)>{others}; };
    change("add", [&](auto& b) { b.addTimeBlock(from, to); });
    change("remove", [&](auto& b) { b.removeTimeBlock(from, to); });
    change("add many", [&](auto& b) { b.addTimeBlocks(another(b)); });
    change("remove many", [&](auto& b) { b.removeTimeBlock(another(b)); });
    change("add itself", [&](auto& b) { b.addTimeBlocks(b); });
    change("remove itself", [&](auto& b) { b.removeTimeBlock(b); });
    ask("shared", [&](auto& b) { return b.hasIntersection(from, to); });
    ask("overlap", [&](auto& b) { return b.overlap(from, to); });
    ask("intersection", [&](auto& b) { return b.intersection(from, to); });
    ask("contained", [&](auto& b) { return b.haveBlock(from, to); });
    ask("room", [&](auto& b) { return b.haveBlock(from, to, length); });
    ask("total", [&](auto& b) { return b.getTotalDur(); });
    ask("total in", [&](auto& b) { return b.getTotalDur(from, to); });
    ask("days", [&](auto& b) { return b.haveCompleteDays(from, to, count); });
    ask("touched", [&](auto& b) { return b.getInvolveStatus(day, lastDay); });
    ask("full", [&](auto& b) { return b.getFullDayInvolveStatus(day, lastDay); });
    ask("full day", [&](auto& b) { return b.haveFullDay(day); });
    ask("after", [&](auto& b) { return b.getBlockAtPos4Dur(from, length); });
    ask("before", [&](auto& b) { return b.getBlockAtPos4DurByEnd(from, length); });
    // All days from the first to the last that there are would take long to list.
    if (!isWild_) ask("by day", [&](auto& b) { return b.getStatisticByDay(); });
  }

 private:
  // Few different times, so that they often touch, some close to midnight, and some special or
  // far.
  ptime time() {
    using namespace boost::date_time;
    const ptime near(kFirstDay, hours(6 * number_(range_)));
    if (isWild_ && number_(8) == 0) {
      const special_values special[] = {not_a_date_time, pos_infin, neg_infin, min_date_time,
                                        max_date_time};
      if (const int kind = number_(6); kind < 5) return ptime(special[kind]);
      return shifted(near, hours(std::int64_t{100} * (number_(1'700'000) - 850'000)));
    }
    return number_(8) == 0 ? near + milliseconds(1000 * number_(2) - 500) : near;
  }

  Slots slots() {
    Slots made(static_cast<std::size_t>(number_(10)));
    std::vector<ptime> times(2 * made.size());
    std::generate(times.begin(), times.end(), [&] { return time(); });
    const int kind = number_(6);
    if (kind < 3) std::sort(times.begin(), times.end());
    for (std::size_t i = 0; i < made.size(); ++i) {
      made[i] = slotOf(times[2 * i], times[2 * i + 1]);
      if (kind < 5 && times[2 * i + 1] < times[2 * i])
        made[i] = slotOf(times[2 * i + 1], times[2 * i]);
    }
    if (number_(2) == 0) std::sort(made.begin(), made.end());
    return made;
  }

  template <class Query, class Same>
  void compare(const char* what, Query query, Same same) {
    const PlainBlock before = plain_;
    const auto answer = [&](auto& block) {
      try {
        return text(query(block));
      } catch (const std::exception& error) {
        return std::string(error.what());
      }
    };
    std::string expected;
    try {
      expected = answer(plain_);
    } catch (const Dies&) {
      plain_ = before;
      return;
    }
    const std::string found = answer(block_);
    same(what, expected + " leaves " + text(plain_), found + " leaves " + text(block_));
  }

  Number number_;
  bool isWild_ = false;
  int range_ = 40;
  PlainBlock plain_;
  TimeBlock block_;
};

}  // namespace test_support
