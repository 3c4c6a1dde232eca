// Queries of TimeBlock: time in a window, time on each day, and working time from a position.
#include <algorithm>
#include <cstdint>

#include "libvarrow/backtrace/Check.h"
#include "libvarrow/log/log.h"
#include "libvarrow/time/TimeBlock.h"
#include "libvarrow/time/time_range.h"
#include "time/saturating_time.h"
#include "time/slot_rules.h"
#include "time/slot_search.h"

namespace libvarrow {

using boost::gregorian::date;
using boost::posix_time::hours;
using boost::posix_time::microseconds;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using slot_search::rowOf;
using slot_search::SlotsNear;

namespace {

constexpr boost::gregorian::days kOneDay(1);

void logBlock(const TimeBlock& block) {
  LIBVARROW_LOG_ERROR("timeBlock: \n%s \n", block.dumpAsString().c_str());
}

// Ignores fractions: a begin less than a second after midnight counts as the begin of the day.
bool isPastMidnight(const ptime& time) {
  return time.time_of_day().total_seconds() > 0;
}

date firstMidnightInside(const TimeSlot& slot) {
  const date day = slot.time_begin.date();
  return isPastMidnight(slot.time_begin) ? day + kOneDay : day;
}

// Returns the days from `from` to `to`. Accepts special dates. The result is clamped to ±2^32 days,
// more than exist.
std::int64_t daysBetween(const date& from, const date& to) {
  constexpr std::int64_t kMost = std::int64_t{1} << 32;
  return std::clamp<std::int64_t>((to - from).days(), -kMost, kMost);
}

// Appends the days from `first` to `last`, both included. Returns false when `first` is before the
// last day of the list.
bool appendDays(date first, const date& last, std::vector<date>& list) {
  if (last < first) return true;
  if (!list.empty() && first < list.back()) return false;
  if (first != last) requireCountable(first, last);
  if (!list.empty() && first == list.back()) {
    if (first == last) return true;
    first += kOneDay;
  }
  const std::int64_t count = first == last ? 1 : daysBetween(first, last) + 1;
  for (std::int64_t i = 0; i < count; ++i, first += kOneDay) list.push_back(first);
  return true;
}

std::vector<bool> noFlags(const date& begin, const date& end) {
  requireCountable(begin, end);
  return std::vector<bool>(static_cast<std::size_t>(daysBetween(begin, end) + 1));
}

template <class Iterator>
TimeBlock unionOf(Iterator first, Iterator last) {
  TimeBlock result;
  for (; first != last; ++first) result.addTimeBlock(first->time_begin, first->time_end);
  return result;
}

void setFlags(std::vector<bool>& flags, std::int64_t from, std::int64_t to) {
  std::fill(flags.begin() + from, flags.begin() + to, true);
}

}  // namespace

bool TimeBlock::isOrderedInRealTime() const {
  return isOrdered_ && slot_rules::haveRealTimesOnly(timeslots);
}

// ---- Total time

time_duration TimeBlock::getTotalDur() const {
  return slot_rules::total(timeslots, isOrderedInRealTime());
}

time_duration TimeBlock::getTotalDur(ptime const& statistical_time_begin,
                                     ptime const& statistical_time_end) const {
  LIBVARROW_CHECK(statistical_time_begin < statistical_time_end);
  return slot_rules::totalInside(lowerBound(timeslots, statistical_time_begin), timeslots.cend(),
                                 statistical_time_begin, statistical_time_end);
}

time_duration TimeBlock::getTotalDur(date const& date_begin, date const& date_end) const {
  return getTotalDur(ptime(date_begin), ptime(date_end + kOneDay));
}

// ---- Days

std::vector<date> TimeBlock::getAllDates() const {
  std::vector<date> dates;
  for (const TimeSlot& slot : timeslots) {
    const date first = slot.time_begin.date();
    const date last = slot.time_end.date();
    if (last < first) {
      logBlock(*this);
      LIBVARROW_CHECK(false);
    }
    if (!appendDays(first, last, dates)) {
      logBlock(*this);
      CPPBIND_ASSERT(false);
    }
  }
  return dates;
}

std::vector<date> TimeBlock::getDatesContainFullDay() const {
  std::vector<date> dates;
  for (const TimeSlot& slot : timeslots) {
    if (!appendDays(firstMidnightInside(slot), slot.time_end.date(), dates)) {
      logBlock(*this);
      CPPBIND_ASSERT(false);
    }
  }
  return dates;
}

std::vector<bool> TimeBlock::getInvolveStatus(date date_begin, date date_end) const {
  LIBVARROW_CHECK(date_begin <= date_end);
  std::vector<bool> flags = noFlags(date_begin, date_end);
  for (const TimeSlot& slot :
       SlotsNear(timeslots, isOrderedInRealTime(), ptime(date_begin), ptime(date_end + kOneDay))) {
    const date first = slot.time_begin.date();
    const date last = slot.time_end.date();
    if (last < first) {
      logBlock(*this);
      LIBVARROW_CHECK(false);
    }
    if (last < date_begin || date_end < first) continue;
    setFlags(flags, daysBetween(date_begin, std::max(first, date_begin)),
             daysBetween(date_begin, std::min(last, date_end)) + 1);
  }
  return flags;
}

std::vector<bool> TimeBlock::getFullDayInvolveStatus(date date_begin, date date_end) const {
  LIBVARROW_CHECK(date_begin <= date_end);
  std::vector<bool> flags = noFlags(date_begin, date_end);
  const auto count = static_cast<std::int64_t>(flags.size());
  for (const TimeSlot& slot :
       SlotsNear(timeslots, isOrderedInRealTime(), ptime(date_begin), ptime(date_end + kOneDay))) {
    const std::int64_t first =
        daysBetween(date_begin, slot.time_begin.date()) + (isPastMidnight(slot.time_begin) ? 1 : 0);
    const std::int64_t last = daysBetween(date_begin, slot.time_end.date());
    if (!(first < last)) continue;
    if (first >= count) break;
    const std::int64_t from = std::max<std::int64_t>(first, 0);
    const std::int64_t to = std::min(last, count);
    if (from < to) setFlags(flags, from, to);
  }
  return flags;
}

std::map<date, time_duration> TimeBlock::getStatisticByDay() const {
  std::map<date, time_duration> total;
  for (const TimeSlot& slot : timeslots) {
    const date first = slot.time_begin.date();
    const date last = slot.time_end.date();
    if (first == last) {
      total[first] += slot.dur();
      continue;
    }
    if (first < last) requireCountable(first, last);
    total[first] += hours(24) - slot.time_begin.time_of_day();
    total[last] += slot.time_end.time_of_day();
    for (date day = first + kOneDay; day < last; day += kOneDay) total[day] += hours(24);
  }
  return total;
}

bool TimeBlock::haveCompleteDays(ptime const& start, ptime const& end, int days) const {
  // If `days` is less than one, slots outside the window count too.
  const bool isNarrowed =
      days >= 1 && isOrderedInRealTime() && !start.is_special() && !end.is_special();
  for (const TimeSlot& slot : SlotsNear(timeslots, isNarrowed, start, end)) {
    const ptime& lo = std::max(start, slot.time_begin);
    const ptime& hi = std::min(slot.time_end, end);
    if (days <= daysBetween(lo.date(), hi.date()) - (isPastMidnight(lo) ? 1 : 0)) return true;
  }
  return false;
}

bool TimeBlock::haveFullDay(date d) const {
  return haveBlock(ptime(d), ptime(d + kOneDay));
}

// ---- Working time

std::optional<ptime> TimeBlock::workEnd(ptime const& start, time_duration const& work) const {
  TimeBlock copy;
  return slot_rules::workEnd(rowOf(slotsInOrder(copy)), start, work);
}

std::optional<ptime> TimeBlock::workStart(ptime const& end, time_duration const& work) const {
  TimeBlock copy;
  return slot_rules::workStart(rowOf(slotsInOrder(copy)), end, work);
}

std::optional<ptime> TimeBlock::nextWorking(ptime const& t) const {
  TimeBlock copy;
  return slot_rules::nextWorking(rowOf(slotsInOrder(copy)), t);
}

std::optional<ptime> TimeBlock::lastWorking(ptime const& t) const {
  TimeBlock copy;
  return slot_rules::lastWorking(rowOf(slotsInOrder(copy)), t);
}

// ---- The slots of work

TimeBlock TimeBlock::getBlockAtPos4Dur(ptime const& pos, time_duration const& dur) const {
  auto slot = lowerBound(timeslots, pos);
  const time_duration zero;
  if (slot != timeslots.end() && dur == zero) return TimeBlock(pos, shifted(pos, microseconds(1)));
  TimeBlock result;
  if (zero < dur && !dur.is_special() && !pos.is_special() && isOrderedInRealTime()) {
    const auto found = slot_rules::findEnd(slot, timeslots.end(), pos, dur);
    // See below.
    if (!found || found->slot + 1 == timeslots.end()) return result;
    const slot_search::Row used{&*slot, &*found->slot + 1};
    return TimeBlock(slot_rules::intersection(used, pos, found->time));
  }
  ptime at = pos;
  time_duration remaining = dur;
  for (; slot != timeslots.end(); ++slot) {
    if (remaining == zero) return result;
    const ptime lo = std::max(at, slot->time_begin);
    at = std::min(shifted(lo, remaining), slot->time_end);
    result.addTimeBlock(lo, at);
    remaining -= at - lo;
  }
  // Returns no slot even if the last one had just enough: without a later slot no result is
  // certain.
  return empty_block;
}

TimeBlock TimeBlock::getBlockAtPos4DurByEnd(ptime const& pos, time_duration const& dur) const {
  auto slot = lowerBound(timeslots, pos);
  std::vector<TimeSlot> backwards;
  time_duration remaining = dur;
  ptime latest = pos;
  // Uses only slots that end before `pos`: the forward search uses the slot that contains it.
  while (slot != timeslots.begin()) {
    --slot;
    const ptime hi = std::min(slot->time_end, latest);
    const ptime lo = shifted(hi, -remaining);
    const bool isEnough = slot->time_begin <= lo;
    const ptime& from = isEnough ? lo : slot->time_begin;
    requireForwards(from, hi);
    backwards.emplace_back(from, hi);
    if (isEnough) return unionOf(backwards.rbegin(), backwards.rend());
    remaining -= hi - from;
    latest = boost::date_time::pos_infin;
  }
  return empty_block;
}

}  // namespace libvarrow
