#include "libvarrow/time/Timeline.h"

#include <algorithm>
#include <utility>

#include "cppbind/Assert.h"
#include "libvarrow/backtrace/Check.h"
#include "time/slot_rules.h"
#include "time/slot_search.h"
#include "time/slot_sweep.h"

namespace libvarrow {

using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using slot_search::firstNot;
using slot_search::rowOf;

namespace {

// The most slots of a chunk. A change moves half of them on average; longer chunks cost more moves,
// shorter ones a longer list of chunks.
constexpr std::size_t kMost = 128;

// The slots of a chunk of a new timeline, with room for changes.
constexpr std::size_t kUsual = 96;

// Returns the slots of the block, or of `copy`, which receives them in order if they are not.
const slot_search::Slots& slotsInOrder(const TimeBlock& block, TimeBlock& copy) {
  if (slot_search::areOrdered(block.getBlocks())) return block.getBlocks();
  copy.addTimeBlocks(block);
  return copy.getBlocks();
}

}  // namespace

// The searches that slot_rules needs.
struct Timeline::Ordered {
  const Timeline& timeline;

  const_iterator begin() const { return timeline.begin(); }
  const_iterator end() const { return timeline.end(); }

  // Finds the chunk first, by the end of its last slot. That chunk contains the slot.
  const_iterator endingFrom(const ptime& time) const {
    return find([&](const ptime& end) { return end < time; },
                [&](slot_search::Row slots) { return slots.endingFrom(time); });
  }
  const_iterator endingAfter(const ptime& time) const {
    return find([&](const ptime& end) { return !(time < end); },
                [&](slot_search::Row slots) { return slots.endingAfter(time); });
  }
  // A slot that begins at `time` or later also ends there or later, so it is not in an earlier
  // chunk. If all slots of the chunk begin before `time`, it is the first slot of the next chunk.
  const_iterator beginningFrom(const ptime& time) const {
    return find([&](const ptime& end) { return end < time; },
                [&](slot_search::Row slots) { return slots.beginningFrom(time); });
  }

 private:
  template <class IsBefore, class Search>
  const_iterator find(IsBefore isBefore, Search search) const {
    const auto& ends = timeline.ends_;
    const auto chunk =
        static_cast<std::size_t>(firstNot(ends.begin(), ends.end(), isBefore) - ends.begin());
    if (chunk == ends.size()) return timeline.end();
    return timeline.inChunk(chunk, search(rowOf(timeline.chunks_[chunk])));
  }
};

Timeline::const_iterator Timeline::inChunk(std::size_t chunk, const TimeSlot* slot) const {
  const_iterator found = at(chunk);
  if (slot == found.slotsEnd_) return at(chunk + 1);
  found.slot_ = slot;
  return found;
}

// ---- From and to a block

Timeline::Timeline(TimeBlock const& block) {
  TimeBlock copy;
  const slot_search::Slots& slots = slotsInOrder(block, copy);
  size_ = slots.size();
  for (std::size_t from = 0; from < size_; from += kUsual) {
    const std::size_t count = std::min(kUsual, size_ - from);
    Chunk& chunk = chunks_.emplace_back();
    if (size_ > kUsual) chunk.reserve(kMost);
    const auto first = slots.begin() + static_cast<std::ptrdiff_t>(from);
    chunk.assign(first, first + static_cast<std::ptrdiff_t>(count));
    ends_.push_back(chunk.back().time_end);
  }
}

TimeBlock Timeline::toTimeBlock() const {
  std::vector<TimeSlot> slots;
  slots.reserve(size_);
  for (const Chunk& chunk : chunks_) slots.insert(slots.end(), chunk.begin(), chunk.end());
  return TimeBlock(std::move(slots));
}

// ---- Union and subtraction

void Timeline::addTimeBlock(ptime const& bstart, ptime const& bend) {
  if (!slot_rules::isToAdd(bstart, bend)) return;
  const const_iterator first =
      slot_rules::isAfterAll(*this, bstart) ? end() : Ordered{*this}.endingFrom(bstart);
  apply(slot_rules::addition(first, end(), TimeSlot(bstart, bend)));
}

void Timeline::removeTimeBlock(ptime const& start, ptime const& end) {
  CPPBIND_ASSERT(start <= end);
  const const_iterator first = Ordered{*this}.endingAfter(start);
  apply(slot_rules::removal(first, this->end(), TimeSlot(start, end)));
}

template <class Change>
void Timeline::apply(Change const& change) {
  const slot_search::Row pieces = change.row();
  if (change.first == change.last && pieces.size() == 0) return;
  if (chunks_.empty()) insertChunk(0, 1);
  Place first = placeOf(change.first);
  Place last = placeOf(change.last);
  if (last.slot == 0 && last.chunk > first.chunk) {
    last = {last.chunk - 1, chunks_[last.chunk - 1].size()};
  }
  if (first.chunk == last.chunk) {
    const std::size_t replaced = last.slot - first.slot;
    if (replaced < pieces.size()) first = makeRoom(first);
    replace(first, first.slot + replaced, pieces.begin(), pieces.end());
    return removeEmpty(first.chunk, first.chunk + 1);
  }
  // At most two pieces replace at least two slots, so no chunk grows.
  const std::size_t headEnd = chunks_[first.chunk].size();
  const TimeSlot* const middle = pieces.begin() + std::min(pieces.size(), headEnd - first.slot);
  replace(first, headEnd, pieces.begin(), middle);
  for (std::size_t chunk = first.chunk + 1; chunk < last.chunk; ++chunk) {
    replace({chunk, 0}, chunks_[chunk].size(), nullptr, nullptr);
  }
  replace({last.chunk, 0}, last.slot, middle, pieces.end());
  removeEmpty(first.chunk, last.chunk + 1);
}

// Returns the place of a slot; for the end, the place after the last slot.
Timeline::Place Timeline::placeOf(const_iterator const& slot) const {
  if (slot.slot_ == nullptr) return {chunks_.size() - 1, chunks_.back().size()};
  return {static_cast<std::size_t>(slot.chunk_ - chunks_.data()),
          static_cast<std::size_t>(slot.slot_ - slot.chunk_->data())};
}

void Timeline::replace(Place first, std::size_t last, TimeSlot const* pieces,
                       TimeSlot const* piecesEnd) {
  Chunk& slots = chunks_[first.chunk];
  size_ -= slots.size();
  const auto place = slots.cbegin();
  slot_sweep::replace(slots, place + static_cast<std::ptrdiff_t>(first.slot),
                      place + static_cast<std::ptrdiff_t>(last), {pieces, piecesEnd});
  size_ += slots.size();
}

// Makes room for one more slot in the chunk, and splits a full chunk. Returns the new place of the
// same slot.
Timeline::Place Timeline::makeRoom(Place place) {
  if (chunks_[place.chunk].size() < kMost) {
    slot_sweep::makeRoom(chunks_[place.chunk], 1);
    return place;
  }
  insertChunk(place.chunk + 1, kMost);
  Chunk& lower = chunks_[place.chunk];
  Chunk& upper = chunks_[place.chunk + 1];
  // Not in the middle for a slot at the end: slots that are added in order then fill their chunks.
  const std::size_t kept = place.slot == kMost ? kMost : kMost / 2;
  const auto middle = lower.begin() + static_cast<std::ptrdiff_t>(kept);
  upper.assign(middle, lower.end());
  lower.erase(middle, lower.end());
  ends_[place.chunk] = lower.back().time_end;
  if (!upper.empty()) ends_[place.chunk + 1] = upper.back().time_end;
  return place.slot < kept ? place : Place{place.chunk + 1, place.slot - kept};
}

// Inserts an empty chunk with room for slots, which the caller adds.
void Timeline::insertChunk(std::size_t place, std::size_t room) {
  Chunk slots;
  slots.reserve(room);
  slot_sweep::makeRoom(chunks_, 1);
  slot_sweep::makeRoom(ends_, 1);
  const auto offset = static_cast<std::ptrdiff_t>(place);
  chunks_.insert(chunks_.begin() + offset, std::move(slots));
  ends_.insert(ends_.begin() + offset, ptime());
}

// Removes the chunks from `first` to `last` that a change left empty, and updates the ends of the
// others.
void Timeline::removeEmpty(std::size_t first, std::size_t last) {
  std::size_t kept = first;
  for (std::size_t chunk = first; chunk < last; ++chunk) {
    if (chunks_[chunk].empty()) continue;
    if (kept != chunk) chunks_[kept] = std::move(chunks_[chunk]);
    ends_[kept] = chunks_[kept].back().time_end;
    ++kept;
  }
  const auto from = static_cast<std::ptrdiff_t>(kept);
  const auto to = static_cast<std::ptrdiff_t>(last);
  chunks_.erase(chunks_.begin() + from, chunks_.begin() + to);
  ends_.erase(ends_.begin() + from, ends_.begin() + to);
  mergeWithNext(first);
  if (first > 0) mergeWithNext(first - 1);
}

// Merges two neighbours with few slots if that allocates no memory.
void Timeline::mergeWithNext(std::size_t chunk) {
  if (chunk + 1 >= chunks_.size()) return;
  Chunk& slots = chunks_[chunk];
  const Chunk& next = chunks_[chunk + 1];
  const std::size_t count = slots.size() + next.size();
  if (count > kMost / 2 || count > slots.capacity()) return;
  slots.insert(slots.end(), next.begin(), next.end());
  chunks_.erase(chunks_.begin() + static_cast<std::ptrdiff_t>(chunk + 1));
  ends_.erase(ends_.begin() + static_cast<std::ptrdiff_t>(chunk));
}

// ---- Relation to an interval

TimeBlock Timeline::intersection(ptime const& start, ptime const& end) const {
  if (!empty()) CPPBIND_ASSERT(start <= end);
  return TimeBlock(slot_rules::intersection(Ordered{*this}, start, end));
}

TimeBlock Timeline::intersection(TimeBlock const& other) const {
  TimeBlock copy;
  return TimeBlock(slot_rules::intersection(Ordered{*this}, rowOf(slotsInOrder(other, copy))));
}

TimeBlock Timeline::gaps(ptime const& start, ptime const& end) const {
  LIBVARROW_CHECK(start <= end);
  return TimeBlock(slot_rules::gaps(Ordered{*this}, start, end));
}

bool Timeline::hasIntersection(ptime const& start, ptime const& end) const {
  if (!empty()) CPPBIND_ASSERT(start <= end);
  return slot_rules::haveShared(Ordered{*this}, start, end);
}

bool Timeline::haveBlock(ptime const& start, ptime const& end) const {
  CPPBIND_ASSERT(start <= end);
  return slot_rules::haveAll(Ordered{*this}, start, end);
}

bool Timeline::haveBlock(ptime const& start, ptime const& end, time_duration const& dur) const {
  return slot_rules::haveRoom(Ordered{*this}.endingFrom(start), this->end(), true, start, end, dur);
}

// ---- Time

time_duration Timeline::getTotalDur() const {
  return slot_rules::total(*this, slot_rules::haveRealTimesOnly(*this));
}

time_duration Timeline::getTotalDur(ptime const& statistical_time_begin,
                                    ptime const& statistical_time_end) const {
  LIBVARROW_CHECK(statistical_time_begin < statistical_time_end);
  return slot_rules::totalInside(Ordered{*this}.endingFrom(statistical_time_begin), end(),
                                 statistical_time_begin, statistical_time_end);
}

std::optional<ptime> Timeline::workEnd(ptime const& start, time_duration const& work) const {
  return slot_rules::workEnd(Ordered{*this}, start, work);
}

std::optional<ptime> Timeline::workStart(ptime const& end, time_duration const& work) const {
  return slot_rules::workStart(Ordered{*this}, end, work);
}

std::optional<ptime> Timeline::nextWorking(ptime const& t) const {
  return slot_rules::nextWorking(Ordered{*this}, t);
}

std::optional<ptime> Timeline::lastWorking(ptime const& t) const {
  return slot_rules::lastWorking(Ordered{*this}, t);
}

// ---- The slots

ptime const& Timeline::beginTime() const {
  CPPBIND_ASSERT(!empty());
  return chunks_.front().front().time_begin;
}

ptime const& Timeline::endTime() const {
  CPPBIND_ASSERT(!empty());
  return ends_.back();
}

bool Timeline::operator==(Timeline const& other) const {
  return size_ == other.size_ && std::equal(begin(), end(), other.begin());
}

}  // namespace libvarrow
