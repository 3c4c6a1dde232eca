#include "libvarrow/time/TimeBlock.h"

#include <algorithm>
#include <ostream>
#include <stdexcept>
#include <type_traits>

#include "cppbind/imp/binder.h"
#include "libvarrow/backtrace/Check.h"
#include "libvarrow/stream/FastStringStream.h"
#include "libvarrow/stream/StringIndent.h"
#include "time/interval_rules.h"
#include "time/saturating_time.h"
#include "time/slot_rules.h"
#include "time/slot_search.h"
#include "time/slot_sweep.h"

namespace libvarrow {

using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using interval_rules::overlapForwards;
using slot_search::firstNot;
using slot_search::rowOf;
using slot_search::Slots;
using slot_search::SlotsNear;

// Moving the tail of a block is most of the cost of a change.
static_assert(std::is_trivially_copyable_v<TimeSlot>);

const TimeBlock TimeBlock::empty_block;

namespace {

// The count from which on one pass over both blocks costs less than single changes.
constexpr std::size_t kManySlots = 4;

bool beginsEarlier(const TimeSlot& a, const TimeSlot& b) {
  return a.time_begin < b.time_begin;
}

bool isReversed(const TimeSlot& slot) {
  return slot.time_end < slot.time_begin;
}

Slots sortedByBegin(Slots slots) {
  std::sort(slots.begin(), slots.end(), beginsEarlier);
  return slots;
}

bool haveReversed(const Slots& slots) {
  return std::any_of(slots.begin(), slots.end(), isReversed);
}

void writeSlot(FastStringStream& text, const TimeSlot& slot) {
  text << '[' << slot.time_begin << ',' << slot.time_end << "]:" << slot.dur();
}

}  // namespace

// ---- TimeSlot

bool TimeSlot::overlap(ptime const& t1, ptime const& t2) const {
  LIBVARROW_CHECK(t1 <= t2);
  return interval_rules::overlap(t1, t2, time_begin, time_end);
}

bool TimeSlot::overlap(ptime const& t1, ptime const& t2, ptime const& p1, ptime const& p2) {
  LIBVARROW_CHECK(t1 <= t2);
  LIBVARROW_CHECK(p1 <= p2);
  return interval_rules::overlap(t1, t2, p1, p2);
}

void TimeSlot::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->bind("timeBegin", time_begin);
  binder->bind("timeEnd", time_end);
}

// ---- Construction

TimeBlock::TimeBlock(ptime const& begin, ptime const& end) {
  addTimeBlock(begin, end);
}

TimeBlock::TimeBlock(std::vector<TimeSlot> const& slots) : timeslots(slots) {
  checkOrder();
}

TimeBlock::TimeBlock(std::vector<TimeSlot>&& slots) : timeslots(std::move(slots)) {
  checkOrder();
}

void TimeBlock::checkOrder() {
  isOrdered_ = slot_search::areOrdered(timeslots);
}

Slots const& TimeBlock::slotsInOrder(TimeBlock& copy) const {
  if (isOrdered_) return timeslots;
  copy.addTimeBlocks(*this);
  return copy.timeslots;
}

// ---- Union and subtraction

void TimeBlock::addTimeBlock(ptime bstart, ptime bend) {
  if (!slot_rules::isToAdd(bstart, bend)) return;
  if (isOrdered_ && slot_rules::isAfterAll(*this, bstart)) {
    timeslots.emplace_back(bstart, bend);
    return;
  }
  const auto first = lowerBound(timeslots, bstart);
  const auto index = static_cast<std::size_t>(first - timeslots.cbegin());
  // Postcondition of the binary search, even for unordered slots.
  if (index > 0) LIBVARROW_CHECK(this->timeslots[index - 1].time_end < bstart);
  if (first != timeslots.cend()) LIBVARROW_CHECK(this->timeslots[index].time_end >= bstart);

  const auto change = slot_rules::addition(first, timeslots.cend(), TimeSlot(bstart, bend));
  slot_sweep::replace(timeslots, change.first, change.last, change.row());
  if (!isOrdered_ && timeslots.size() == 1) checkOrder();
}

void TimeBlock::addTimeBlocks(TimeBlock const& other) {
  if (&other == this) return addTimeBlocks(TimeBlock(other));
  const Slots& additions = other.timeslots;
  // A moved-from block may have been out of order.
  if (timeslots.empty()) checkOrder();
  if (!isOrdered_ || additions.size() < kManySlots) return addOneByOne(additions);
  // Ordered slots need no check for reversed or unsorted ones.
  if (other.isOrdered_) return unite(additions);
  if (haveReversed(additions)) return addOneByOne(additions);
  if (std::is_sorted(additions.begin(), additions.end(), beginsEarlier)) return unite(additions);
  unite(sortedByBegin(additions));
}

void TimeBlock::addOneByOne(std::vector<TimeSlot> const& additions) {
  // Reserves for all additions first, so that a later one cannot run out of memory.
  if (additions.size() > 1) slot_sweep::makeRoom(timeslots, additions.size());
  const auto addUntil = [&](Slots::const_iterator last) {
    for (auto slot = additions.begin(); slot != last; ++slot) {
      addTimeBlock(slot->time_begin, slot->time_end);
    }
  };
  const auto reversed = std::find_if(additions.begin(), additions.end(), isReversed);
  try {
    if (reversed != additions.end()) requireForwards(reversed->time_begin, reversed->time_end);
  } catch (const std::runtime_error&) {
    // Adds slots only after the exception exists, because creating it may throw std::bad_alloc.
    addUntil(reversed);
    throw;
  }
  addUntil(additions.end());
  // Checks once, and only after many additions, each of which moves slots anyway.
  if (!isOrdered_ && additions.size() >= kManySlots) checkOrder();
}

void TimeBlock::unite(std::vector<TimeSlot> const& additions) {
  const auto first = lowerBound(timeslots, additions.front().time_begin);
  const Slots united = slot_sweep::unite(first, timeslots.cend(), additions);
  slot_sweep::replace(timeslots, first, timeslots.cend(), rowOf(united));
}

void TimeBlock::removeTimeBlock(ptime start, ptime end) {
  CPPBIND_ASSERT(start <= end);
  const TimeSlot cut(start, end);
  if (!isOrdered_) return subtract({cut});
  const auto first =
      firstNot(timeslots.cbegin(), timeslots.cend(), slot_search::beforeEndAfter(start));
  const auto change = slot_rules::removal(first, timeslots.cend(), cut);
  slot_sweep::replace(timeslots, change.first, change.last, change.row());
}

void TimeBlock::removeTimeBlock(TimeBlock const& other) {
  if (&other == this) return removeTimeBlock(TimeBlock(other));
  const Slots& cuts = other.timeslots;
  if (cuts.size() < kManySlots) return removeOneByOne(cuts);
  if (other.isOrdered_) return subtract(cuts);
  // A joined cut may remove a reversed slot that the separate cuts would keep.
  const bool areJoinable = isOrdered_ || !haveReversed(timeslots);
  if (!areJoinable || haveReversed(cuts)) return removeOneByOne(cuts);
  subtract(slot_sweep::joined(sortedByBegin(cuts)));
}

void TimeBlock::removeOneByOne(std::vector<TimeSlot> const& cuts) {
  if (!isOrdered_ && cuts.size() > 1) {
    // Works on a copy, because each of these removals creates a new vector.
    TimeBlock rest(*this);
    for (const TimeSlot& slot : cuts) rest.removeTimeBlock(slot.time_begin, slot.time_end);
    *this = std::move(rest);
    return;
  }
  if (cuts.size() > 1) slot_sweep::makeRoom(timeslots, cuts.size());
  for (const TimeSlot& slot : cuts) removeTimeBlock(slot.time_begin, slot.time_end);
}

void TimeBlock::subtract(std::vector<TimeSlot> const& cuts) {
  timeslots = slot_sweep::subtract(timeslots, isOrdered_, rowOf(cuts));
  if (!isOrdered_) checkOrder();
}

void TimeBlock::removeTimeBlock(TimeBlock const* other) {
  if (other != nullptr) removeTimeBlock(*other);
}

// ---- Relation to an interval

TimeBlock TimeBlock::intersection(ptime const& start, ptime const& end) const {
  if (isNarrowedBy(start, end)) {
    return TimeBlock(slot_rules::intersection(rowOf(timeslots), start, end));
  }
  TimeBlock result;
  for (const TimeSlot& slot : timeslots) {
    if (!overlapForwards(slot.time_begin, slot.time_end, start, end)) continue;
    result.addTimeBlock(std::max(start, slot.time_begin), std::min(slot.time_end, end));
  }
  return result;
}

TimeBlock TimeBlock::intersection(TimeBlock const& other) const {
  TimeBlock ownCopy, otherCopy;
  const Slots& own = slotsInOrder(ownCopy);
  const Slots& others = other.slotsInOrder(otherCopy);
  return TimeBlock(slot_rules::intersection(rowOf(own), rowOf(others)));
}

TimeBlock TimeBlock::gaps(ptime const& start, ptime const& end) const {
  LIBVARROW_CHECK(start <= end);
  TimeBlock copy;
  return TimeBlock(slot_rules::gaps(rowOf(slotsInOrder(copy)), start, end));
}

bool TimeBlock::intersection(std::pair<ptime, ptime> const& a, std::pair<ptime, ptime> const& b,
                             std::pair<ptime, ptime>& result) {
  const ptime& lo = std::max(a.first, b.first);
  const ptime& hi = std::min(a.second, b.second);
  if (hi < lo) return false;
  result = std::pair<ptime, ptime>(lo, hi);
  return true;
}

bool TimeBlock::overlap(ptime const& start, ptime const& end) const {
  LIBVARROW_CHECK(start <= end);
  if (beginTime() >= end || start >= endTime()) return false;
  for (const TimeSlot& slot : SlotsNear(timeslots, isOrdered_, start, end)) {
    if (slot.overlap(start, end)) return true;
  }
  return false;
}

bool TimeBlock::hasIntersection(ptime const& start, ptime const& end) const {
  if (isNarrowedBy(start, end)) return slot_rules::haveShared(rowOf(timeslots), start, end);
  return std::any_of(begin(), this->end(), [&](const TimeSlot& slot) {
    return overlapForwards(slot.time_begin, slot.time_end, start, end);
  });
}

bool TimeBlock::haveBlock(ptime start, ptime end) const {
  CPPBIND_ASSERT(start <= end);
  if (isOrdered_) return slot_rules::haveAll(rowOf(timeslots), start, end);
  return std::any_of(begin(), this->end(), [&](const TimeSlot& slot) {
    return interval_rules::contains(slot.time_begin, slot.time_end, start, end);
  });
}

bool TimeBlock::haveBlock(ptime start, ptime end, time_duration dur) const {
  const bool isNarrowed = isNarrowedBy(start, end);
  const auto first = isNarrowed ? lowerBound(timeslots, start) : timeslots.cbegin();
  return slot_rules::haveRoom(first, timeslots.cend(), isNarrowed, start, end, dur);
}

// ---- The slots

Slots::const_iterator TimeBlock::lowerBound(std::vector<TimeSlot> const& slots, ptime const& t) {
  return slot_search::lowerBound(slots, t);
}

bool TimeBlock::operator<(TimeBlock const& other) const {
  return beginTime() < other.beginTime();
}

// ---- Text and JSON

void TimeBlock::dumpAsRaw(std::ostream& out, StringIndent const& indent) const {
  const char* separator = "";
  for (const TimeSlot& slot : timeslots) {
    FastStringStream text;
    writeSlot(text, slot);
    out << separator << indent << text.str();
    separator = "\n";
  }
  out << '\n';
}

std::string TimeBlock::dumpAsString() const {
  FastStringStream text;
  const char* separator = "";
  for (const TimeSlot& slot : timeslots) {
    text << separator;
    writeSlot(text, slot);
    separator = "\n";
  }
  return text.str();
}

std::ostream& operator<<(std::ostream& out, TimeBlock const& block) {
  return out << block.dumpAsString();
}

FastStringStream& operator<<(FastStringStream& out, TimeBlock const& block) {
  return out << block.dumpAsString();
}

void TimeBlock::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  // A failed read leaves a part of the slots.
  if (binder->isReading()) isOrdered_ = false;
  binder->bind(timeslots);
  if (isOrdered_) return;
  const bool isSorted = std::is_sorted(timeslots.begin(), timeslots.end());
  if (!isSorted) std::sort(timeslots.begin(), timeslots.end());
  // Does not change the block after sorted slots were written, because threads may share it.
  if (binder->isReading() || !isSorted) checkOrder();
}

}  // namespace libvarrow
