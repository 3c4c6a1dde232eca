// The booked or free time of one resource while a plan is made.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "libvarrow/Export.h"
#include "libvarrow/time/TimeBlock.h"

namespace libvarrow {

/// A set of intervals that changes often: like a TimeBlock, but a single change does not move all
/// later slots. A value type.
///
///     libvarrow::Timeline free(calendar);             // of a TimeBlock
///     while (const Job* job = nextJob()) {
///       const auto end = free.workEnd(job->ready, job->work);
///       if (end) free.removeTimeBlock(job->ready, *end);
///     }
///     libvarrow::TimeBlock left = free.toTimeBlock();
///
/// Functions have the same names and contracts as those of TimeBlock; see the comments there. The
/// slots are always in order: each begins no later than it ends and ends no later than the next
/// begins. A change throws std::bad_alloc when memory runs out and leaves the timeline unchanged.
///
/// The slots are in chunks of at most 128. A change finds its place in O(log n) and moves slots of
/// one chunk or of two. A change that splits or empties a chunk also moves the tail of the list of
/// chunks, which has about n/96 entries. A change that removes or merges k slots takes O(k).
///
/// Threads may share a timeline that none of them changes.
class LIBVARROW_API Timeline {
  using Chunk = std::vector<TimeSlot>;

 public:
  /// Makes a timeline without slots.
  Timeline() = default;
  ///@{
  /// Copies or takes the slots of the other timeline. A timeline that was moved from is empty.
  Timeline(Timeline const& other) = default;
  Timeline(Timeline&& other) noexcept { swap(other); }
  Timeline& operator=(Timeline other) noexcept {
    swap(other);
    return *this;
  }
  ///@}
  /// Takes the slots of the block. A block that is out of order is put in order, as by
  /// TimeBlock::addTimeBlocks: slots that overlap or touch merge, and a reversed one throws.
  explicit Timeline(TimeBlock const& block);
  /// Returns the slots as a block.
  TimeBlock toTimeBlock() const;

  // ---- Union and subtraction

  /// Adds [bstart, bend] as TimeBlock::addTimeBlock does.
  void addTimeBlock(boost::posix_time::ptime const& bstart, boost::posix_time::ptime const& bend);
  /// Removes [start, end] as TimeBlock::removeTimeBlock does.
  void removeTimeBlock(boost::posix_time::ptime const& start, boost::posix_time::ptime const& end);

  // ---- Relation to an interval

  ///@{
  /// Returns the answer of the function of TimeBlock.
  TimeBlock intersection(boost::posix_time::ptime const& start,
                         boost::posix_time::ptime const& end) const;
  TimeBlock intersection(TimeBlock const& other) const;
  TimeBlock gaps(boost::posix_time::ptime const& start, boost::posix_time::ptime const& end) const;
  bool hasIntersection(boost::posix_time::ptime const& start,
                       boost::posix_time::ptime const& end) const;
  bool haveBlock(boost::posix_time::ptime const& start, boost::posix_time::ptime const& end) const;
  bool haveBlock(boost::posix_time::ptime const& start, boost::posix_time::ptime const& end,
                 boost::posix_time::time_duration const& dur) const;
  ///@}

  // ---- Time

  ///@{
  /// Returns the answer of the function of TimeBlock.
  boost::posix_time::time_duration getTotalDur() const;
  boost::posix_time::time_duration getTotalDur(
      boost::posix_time::ptime const& statistical_time_begin,
      boost::posix_time::ptime const& statistical_time_end) const;
  std::optional<boost::posix_time::ptime> workEnd(
      boost::posix_time::ptime const& start, boost::posix_time::time_duration const& work) const;
  std::optional<boost::posix_time::ptime> workStart(
      boost::posix_time::ptime const& end, boost::posix_time::time_duration const& work) const;
  std::optional<boost::posix_time::ptime> nextWorking(boost::posix_time::ptime const& t) const;
  std::optional<boost::posix_time::ptime> lastWorking(boost::posix_time::ptime const& t) const;
  ///@}

  // ---- The slots

  /// Iterates over the slots in order of time. Valid until the timeline changes.
  class const_iterator {
   public:
    ///@{
    /// The types of a bidirectional iterator.
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = TimeSlot;
    using difference_type = std::ptrdiff_t;
    using pointer = TimeSlot const*;
    using reference = TimeSlot const&;
    ///@}

    const_iterator() = default;
    ///@{
    /// Returns the slot, or moves to the next or the previous one.
    reference operator*() const { return *slot_; }
    pointer operator->() const { return slot_; }
    const_iterator& operator++() {
      if (++slot_ == slotsEnd_) enter(chunk_ + 1);
      return *this;
    }
    const_iterator& operator--() {
      if (slot_ == nullptr || slot_ == chunk_->data()) {
        enter(chunk_ - 1);
        slot_ = slotsEnd_;
      }
      --slot_;
      return *this;
    }
    const_iterator operator++(int) {
      const const_iterator before = *this;
      ++*this;
      return before;
    }
    const_iterator operator--(int) {
      const const_iterator before = *this;
      --*this;
      return before;
    }
    ///@}
    ///@{
    /// Compares iterators of one timeline.
    bool operator==(const_iterator const& other) const { return slot_ == other.slot_; }
    bool operator!=(const_iterator const& other) const { return !(*this == other); }
    ///@}

   private:
    friend class Timeline;
    // Makes an iterator to the first slot of a chunk.
    const_iterator(Chunk const* chunk, Chunk const* chunksEnd) : chunksEnd_(chunksEnd) {
      enter(chunk);
    }
    void enter(Chunk const* chunk) {
      chunk_ = chunk;
      slot_ = chunk == chunksEnd_ ? nullptr : chunk->data();
      slotsEnd_ = chunk == chunksEnd_ ? nullptr : slot_ + chunk->size();
    }

    TimeSlot const* slot_ = nullptr;  // null at the end
    TimeSlot const* slotsEnd_ = nullptr;
    Chunk const* chunk_ = nullptr;
    Chunk const* chunksEnd_ = nullptr;
  };

  ///@{
  /// Returns iterators to the first slot and after the last: for (const TimeSlot& slot : timeline).
  const_iterator begin() const { return at(0); }
  const_iterator end() const { return at(chunks_.size()); }
  ///@}
  /// Returns true when the timeline has no slots.
  bool empty() const { return chunks_.empty(); }
  /// Returns the number of slots.
  std::size_t size() const { return size_; }
  ///@{
  /// Returns the begin of the first slot or the end of the last. Aborts when it has none.
  boost::posix_time::ptime const& beginTime() const;
  boost::posix_time::ptime const& endTime() const;
  ///@}
  ///@{
  /// Compares the slots one by one, as TimeBlock does.
  bool operator==(Timeline const& other) const;
  bool operator!=(Timeline const& other) const { return !(*this == other); }
  ///@}

 private:
  struct Ordered;

  void swap(Timeline& other) noexcept {
    chunks_.swap(other.chunks_);
    ends_.swap(other.ends_);
    std::swap(size_, other.size_);
  }
  const_iterator at(std::size_t chunk) const {
    return {chunks_.data() + chunk, chunks_.data() + chunks_.size()};
  }
  const_iterator inChunk(std::size_t chunk, TimeSlot const* slot) const;
  struct Place {
    std::size_t chunk;
    std::size_t slot;
  };
  Place placeOf(const_iterator const& slot) const;
  template <class Change>
  void apply(Change const& change);
  void replace(Place first, std::size_t last, TimeSlot const* pieces, TimeSlot const* piecesEnd);
  Place makeRoom(Place place);
  void insertChunk(std::size_t place, std::size_t room);
  void removeEmpty(std::size_t first, std::size_t last);
  void mergeWithNext(std::size_t chunk);

  // The slots in order, in non-empty chunks of limited length.
  std::vector<Chunk> chunks_;
  // The end of the last slot of each chunk, for searches.
  std::vector<boost::posix_time::ptime> ends_;
  std::size_t size_ = 0;
};

}  // namespace libvarrow
