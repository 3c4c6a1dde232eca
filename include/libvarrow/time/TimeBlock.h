// Calendars and capacities: an interval of time, and a set of such intervals.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstddef>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cppbind/Assert.h"
#include "libvarrow/Export.h"

namespace cppbind {
class Binder;
}

namespace libvarrow {

class FastStringStream;
class StringIndent;

/// One interval of absolute time, [time_begin, time_end]. A value.
///
/// Not to be confused with `utility::TimeSlot` (libvarrow/time/SchedulingTimeSlot.h), a piece of
/// capacity with a shift, a block count and flags. Neither converts to the other.
class LIBVARROW_API TimeSlot {
 public:
  /// Sets both times to not-a-date-time.
  TimeSlot() = default;
  /// Aborts when end < begin.
  TimeSlot(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end)
      : time_begin(begin), time_end(end) {
    CPPBIND_ASSERT(begin <= end);
  }

  /// Returns time_end - time_begin.
  boost::posix_time::time_duration dur() const { return time_end - time_begin; }

  /// Returns whether the slot shares time with [t1, t2]. Intervals that only touch do not: [8, 10]
  /// and [10, 12]. Aborts when t2 < t1.
  bool overlap(boost::posix_time::ptime const& t1, boost::posix_time::ptime const& t2) const;
  /// The same for [t1, t2] and [p1, p2]. Aborts when t2 < t1 or p2 < p1, tested in this order.
  static bool overlap(boost::posix_time::ptime const& t1, boost::posix_time::ptime const& t2,
                      boost::posix_time::ptime const& p1, boost::posix_time::ptime const& p2);

  ///@{
  /// Orders for lower-bound searches for a time in a vector of slots.
  static bool CompareByTimeBegin(TimeSlot const& slot, boost::posix_time::ptime const& t) {
    return slot.time_begin < t;
  }
  static bool CompareByTimeEnd(TimeSlot const& slot, boost::posix_time::ptime const& t) {
    return slot.time_end < t;
  }
  ///@}

  /// Compares time_begin, then time_end.
  bool operator<(TimeSlot const& other) const {
    return time_begin < other.time_begin ||
           (time_begin == other.time_begin && time_end < other.time_end);
  }
  ///@{
  /// Compares both times.
  bool operator==(TimeSlot const& other) const {
    return time_begin == other.time_begin && time_end == other.time_end;
  }
  bool operator!=(TimeSlot const& other) const { return !(*this == other); }
  ///@}

  /// Binds {"timeBegin": "2024-03-05 08:00:00", "timeEnd": "2024-03-05 12:00:00"}. Begin and end
  /// may be in any order.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// The begin. Assignment is not checked: a slot may then end before it begins.
  boost::posix_time::ptime time_begin;
  /// The end.
  boost::posix_time::ptime time_end;
};

/// A set of intervals, for example when a resource is available. A value.
///
///     libvarrow::TimeBlock shift(at(8), at(16));      // 8:00 to 16:00
///     shift.removeTimeBlock(at(12), at(13));          // [8, 12] [13, 16]
///     shift.getTotalDur();                            // 7 hours
///     shift.workEnd(at(9), hours(5));                 // 15:00
///     for (const libvarrow::TimeSlot& slot : shift) draw(slot.time_begin, slot.time_end);
///
/// Violated preconditions abort the process, by CPPBIND_ASSERT or LIBVARROW_CHECK, which differ
/// only in their messages. Neither prints the times, so validate input first.
///
/// addTimeBlock and removeTimeBlock keep the slots sorted and disjoint; the slots that they add are
/// never empty and never touch. Slots from a vector or from JSON are taken unchanged: operations on
/// touching, overlapping or reversed ones are defined slot by slot only, as their comments say.
///
/// Special times (infinities, not-a-date-time) have the order of the date-time library: -infinity,
/// all real times, not-a-date-time, +infinity.
///
/// Searches take O(log n) while the block is in order: each slot begins no later than it ends and
/// ends no later than the next begins. Otherwise they take O(n). A block that was out of order
/// regains fast searches from a change that leaves at most one slot, and from a removal or an
/// addition of many slots that leaves it in order. To put a block in order, add it to an empty one:
/// `TimeBlock ordered; ordered.addTimeBlocks(block);`. A single change in the middle moves all
/// later slots.
///
/// A change throws std::bad_alloc when memory runs out and leaves the block unchanged. (A failed
/// read from JSON leaves a part of the slots.)
///
/// Threads may share a block that none of them changes. Writing a block as JSON sorts its slots,
/// which changes it only if they were not sorted.
class LIBVARROW_API TimeBlock {
 public:
  /// A block without slots, for functions that return references.
  static const TimeBlock empty_block;

  TimeBlock() = default;
  /// Makes a block of one slot, [begin, end], or an empty one when the times are equal. Throws as
  /// addTimeBlock does when they are reversed.
  TimeBlock(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end);
  ///@{
  /// Takes the slots unchanged: does not sort, merge or check them. Explicit, so that a list of
  /// slots does not become a block by accident.
  explicit TimeBlock(std::vector<TimeSlot> const& slots);
  explicit TimeBlock(std::vector<TimeSlot>&& slots);
  ///@}

  // ---- Union and subtraction

  /// Adds [bstart, bend] and merges it with all slots that it overlaps or touches: [8, 12] and
  /// [12, 14] become [8, 14]. Ignores an empty interval.
  ///
  /// Throws a traced std::runtime_error (TracedError.h) when the interval is reversed, and leaves
  /// the block unchanged. Its message is both times without a separator, "2024-03-05 14:00:00" and
  /// "2024-03-05 12:00:00".
  void addTimeBlock(boost::posix_time::ptime bstart, boost::posix_time::ptime bend);

  /// Calls addTimeBlock for each slot of `other`, in order. A reversed slot throws after the slots
  /// before it were added. Many slots cost one pass over both blocks, so collect unordered slots
  /// first: block.addTimeBlocks(TimeBlock(std::move(vectorOfSlots))).
  void addTimeBlocks(TimeBlock const& other);

  /// Removes [start, end] from every slot that shares time with it: [8, 12] less [10, 11] is
  /// [8, 10] and [11, 12]. A slot that only touches it stays whole. Aborts when end < start, where
  /// addTimeBlock throws.
  ///
  /// An empty interval inside a slot splits it into two that touch: [8, 12] less [10, 10] is
  /// [8, 10] and [10, 12].
  void removeTimeBlock(boost::posix_time::ptime start, boost::posix_time::ptime end);

  ///@{
  /// Calls removeTimeBlock for each slot of `other`, in order; does nothing when it is null. Many
  /// slots cost one pass over both blocks.
  void removeTimeBlock(TimeBlock const& other);
  void removeTimeBlock(TimeBlock const* other);
  ///@}

  // ---- Relation to an interval

  /// Returns the block's time inside [start, end]: [8, 12] has [10, 12] in [10, 14] and nothing in
  /// [12, 14]. Aborts when end < start, unless the block is empty.
  TimeBlock intersection(boost::posix_time::ptime const& start,
                         boost::posix_time::ptime const& end) const;

  /// Returns the time that both blocks have, in one pass: [8, 12] and [10, 14] have [10, 12]. Slots
  /// that only touch share nothing; parts that touch become one slot. Blocks that are out of order
  /// are put in order first (see workEnd). Slots may be infinite: [8, +infinity] and
  /// [-infinity, 10] have [8, 10].
  TimeBlock intersection(TimeBlock const& other) const;

  /// Returns the time of [start, end] that the block does not have: with [8, 10] [12, 14], the
  /// window [9, 16] has [10, 12] [14, 16]. Touching slots leave no gap, and empty slots do not
  /// split one. Slots and the window may be infinite: [8, +infinity] leaves [-infinity, 8] of
  /// [-infinity, +infinity]. A block that is out of order is put in order first. Aborts when
  /// end < start.
  TimeBlock gaps(boost::posix_time::ptime const& start, boost::posix_time::ptime const& end) const;

  /// Sets `result` to the common part of two intervals (begin, end), both ends included: [8, 12]
  /// and [12, 13] have [12, 12]. Returns false and leaves `result` unchanged when they are apart.
  static bool intersection(std::pair<boost::posix_time::ptime, boost::posix_time::ptime> const& a,
                           std::pair<boost::posix_time::ptime, boost::posix_time::ptime> const& b,
                           std::pair<boost::posix_time::ptime, boost::posix_time::ptime>& result);

  /// Returns whether a slot shares time with [start, end]; touching does not count: [8, 12] does
  /// not overlap [12, 13]. Aborts when end < start or the block is empty.
  bool overlap(boost::posix_time::ptime const& start, boost::posix_time::ptime const& end) const;

  /// The same, but false for an empty block. Aborts when end < start, unless the block is empty.
  bool hasIntersection(boost::posix_time::ptime const& start,
                       boost::posix_time::ptime const& end) const;

  /// Returns whether one slot contains [start, end], both ends included: [8, 12] contains [8, 12]
  /// and [12, 12]. Aborts when end < start.
  bool haveBlock(boost::posix_time::ptime start, boost::posix_time::ptime end) const;

  /// Returns whether one slot has at least `dur` inside [start, end]. For [12, 14], the slot
  /// [8, 12], which only touches it, satisfies a `dur` of zero and no longer one. Returns false for
  /// reversed times.
  bool haveBlock(boost::posix_time::ptime start, boost::posix_time::ptime end,
                 boost::posix_time::time_duration dur) const;

  // ---- The slots

  /// Returns the first slot that ends at `t` or later, or the end, by binary search.
  static std::vector<TimeSlot>::const_iterator lowerBound(std::vector<TimeSlot> const& slots,
                                                          boost::posix_time::ptime const& t);

  ///@{
  /// Returns the begin of the first slot or the end of the last. Aborts when the block is empty.
  boost::posix_time::ptime const& beginTime() const {
    CPPBIND_ASSERT(!this->timeslots.empty());
    return timeslots.front().time_begin;
  }
  boost::posix_time::ptime const& endTime() const {
    CPPBIND_ASSERT(!this->timeslots.empty());
    return timeslots.back().time_end;
  }
  ///@}
  /// Returns whether the block has no slots.
  bool empty() const { return timeslots.empty(); }
  /// Returns the number of slots.
  std::size_t size() const { return timeslots.size(); }
  ///@{
  /// Iterates over the slots in the order of getBlocks(): for (const TimeSlot& slot : block).
  /// Iterators are valid until the block changes. The loop may walk a temporary block.
  std::vector<TimeSlot>::const_iterator begin() const { return timeslots.begin(); }
  std::vector<TimeSlot>::const_iterator end() const { return timeslots.end(); }
  ///@}
  /// Returns the slots, in order of time unless given out of order. Valid until the block changes.
  std::vector<TimeSlot> const& getBlocks() const& { return timeslots; }
  /// Returns the slots of a temporary block, as in block.intersection(from, to).getBlocks().
  std::vector<TimeSlot> getBlocks() && { return std::move(timeslots); }

  /// Compares the begins of the first slots only. Aborts when a block is empty.
  bool operator<(TimeBlock const& other) const;
  ///@{
  /// Compares the slots one by one. Blocks that have the same time in other slots differ: [8, 10]
  /// [10, 12] is not [8, 12].
  bool operator==(TimeBlock const& other) const { return timeslots == other.timeslots; }
  bool operator!=(TimeBlock const& other) const { return !(*this == other); }
  ///@}

  // ---- Total time

  /// Returns the sum of the lengths of all slots; zero for an empty block.
  boost::posix_time::time_duration getTotalDur() const;

  /// Returns the block's time in a window: [8, 12] has 1 hour in [11, 14]. Aborts when the window
  /// is empty or reversed, or when a slot that it reaches is reversed inside it.
  boost::posix_time::time_duration getTotalDur(
      boost::posix_time::ptime const& statistical_time_begin,
      boost::posix_time::ptime const& statistical_time_end) const;

  /// The same for whole days, the last one included: (March 1, March 1) is all of March 1.
  boost::posix_time::time_duration getTotalDur(boost::gregorian::date const& date_begin,
                                               boost::gregorian::date const& date_end) const;

  /// @name Days
  /// A day d runs from d 0:00 to d+1 0:00. The queries count different days:
  ///
  ///     slot                            touched     midnight inside   full days
  ///     March 1 8:00  to March 2 0:00   1, 2        2                 none
  ///     March 1 0:00  to March 3 0:00   1, 2, 3     1, 2, 3           1, 2
  ///     March 1 0:00  to March 1 12:00  1           1                 none
  ///
  /// A begin less than a second after midnight counts as midnight in the last two columns. Before a
  /// query aborts because of the slots, it logs the block at ERROR, "timeBlock: \n%s \n". Throws a
  /// traced std::runtime_error when the days of an infinite slot would have to be listed.
  ///@{

  /// Returns the days that slots touch, ascending. A shift to midnight touches the next day too,
  /// with zero time (see getStatisticByDay). Aborts when the days are not in order.
  std::vector<boost::gregorian::date> getAllDates() const;

  /// Returns the days whose 0:00 lies inside a slot, ends included, ascending. For full days use
  /// getFullDayInvolveStatus or haveFullDay. A slot that ends on a day before its begin has none.
  /// Aborts when the days are not in order.
  std::vector<boost::gregorian::date> getDatesContainFullDay() const;

  /// Returns for each day from date_begin to date_end, both included, whether a slot touches it.
  /// Aborts when date_end < date_begin, or when a checked slot ends on a day before its begin.
  std::vector<bool> getInvolveStatus(boost::gregorian::date date_begin,
                                     boost::gregorian::date date_end) const;

  /// Returns for each day from date_begin to date_end, both included, whether one slot covers it
  /// completely. In a block that is out of order, ignores all slots after the first whose full days
  /// all lie after date_end. Aborts when date_end < date_begin.
  std::vector<bool> getFullDayInvolveStatus(boost::gregorian::date date_begin,
                                            boost::gregorian::date date_end) const;

  /// Returns the block's time on each day that slots touch: for March 1 8:00 to March 2 0:00, 16
  /// hours on the first day and zero on the second.
  std::map<boost::gregorian::date, boost::posix_time::time_duration> getStatisticByDay() const;

  /// Returns whether one slot, cut to [start, end], covers at least `days` full days. With `days`
  /// below 1, slots outside the window may count.
  bool haveCompleteDays(boost::posix_time::ptime const& start, boost::posix_time::ptime const& end,
                        int days) const;

  /// Returns whether one slot contains the whole day `d`.
  bool haveFullDay(boost::gregorian::date d) const;

  ///@}
  /// @name Working time
  /// Times of work that pauses outside the block. workEnd and workStart are mirror images, and so
  /// are nextWorking and lastWorking; all are O(log n), and O(k) for the k slots of the work.
  ///
  /// Touching slots count as one slot, empty slots as nothing. An infinite slot has any amount of
  /// time: from 9:00 in [8, +infinity] all work ends, infinite work at +infinity. For
  /// not-a-date-time the answer is nothing. A block that is out of order is put in order first, in
  /// O(n log n): time that slots share counts once, and a reversed slot throws as in addTimeBlock.
  ///@{

  /// Returns the earliest time at which `work` that starts at `start` is over, or nothing when the
  /// block has less time from there. Aborts when `work` is negative. With [8, 10] [12, 14]:
  ///
  ///     (9:00, 2 h)   13:00
  ///     (9:00, 1 h)   10:00, not 12:00
  ///     (9:00, 3 h)   14:00: all of the last slot counts
  ///     (9:00, 4 h)   nothing
  ///     (11:00, 0 h)  11:00, whether or not the block has time at 11:00
  ///
  /// Work that starts at -infinity ends at -infinity in a slot that begins there; otherwise it
  /// starts with the first slot: (-infinity, 1 h) is 9:00.
  std::optional<boost::posix_time::ptime> workEnd(
      boost::posix_time::ptime const& start, boost::posix_time::time_duration const& work) const;

  /// Returns the latest time at which `work` must start to be over at `end`, or nothing when the
  /// block has less time before. Aborts when `work` is negative. With [8, 10] [12, 14]:
  ///
  ///     (13:00, 2 h)  9:00
  ///     (13:00, 1 h)  12:00, not 10:00
  ///     (14:00, 4 h)  8:00
  ///     (13:00, 4 h)  nothing
  ///     (11:00, 0 h)  11:00
  std::optional<boost::posix_time::ptime> workStart(
      boost::posix_time::ptime const& end, boost::posix_time::time_duration const& work) const;

  /// Returns the earliest time from which the block has time, at `t` or later; nothing after the
  /// last slot. With [8, 10] [12, 14]: 9:00 for 9:00, and 12:00 for 10:00, where the slot ends.
  std::optional<boost::posix_time::ptime> nextWorking(boost::posix_time::ptime const& t) const;

  /// Returns the latest time until which the block has time, at `t` or earlier; nothing before the
  /// first slot. With [8, 10] [12, 14]: 13:00 for 13:00, and 10:00 for 12:00, where the slot
  /// begins.
  std::optional<boost::posix_time::ptime> lastWorking(boost::posix_time::ptime const& t) const;

  ///@}
  // ---- The slots of work. The two searches are not mirror images: for the time at which work ends
  // or starts use workEnd and workStart.

  /// Returns the first `dur` of the block's time from `pos` on. With [8, 10] [12, 14] [16, 18]:
  ///
  ///     (9:00, 2 h)      [9, 10] [12, 13]
  ///     (9:00, 7 h)      empty: the block has less
  ///     (17:00, 30 min)  empty: a search that ends in the last slot counts as not found
  ///     (11:00, 0 h)     [11:00, 11:00:00.000001], whether or not the block has time at 11:00
  ///     (19:00, 0 h)     empty: no slot ends at `pos` or later
  ///
  /// So a search in a block of one slot finds nothing, and an empty result means that the block has
  /// less, or only just enough with its last slot. To search to the end, add a slot after the
  /// horizon:
  ///
  ///     block.addTimeBlock(block.endTime() + hours(24), block.endTime() + hours(25));
  ///
  /// Throws as addTimeBlock does when `dur` is negative. In a block that is out of order, each slot
  /// counts from the time at which the slot before it was left.
  TimeBlock getBlockAtPos4Dur(boost::posix_time::ptime const& pos,
                              boost::posix_time::time_duration const& dur) const;

  /// Returns the last `dur` of the block's time in slots that end before `pos`. Slots that contain
  /// `pos` or end there are not used. With [8, 10] [12, 14] [16, 18]:
  ///
  ///     (13:00, 1 h)  [9, 10]
  ///     (16:00, 3 h)  [9, 10] [12, 14]
  ///     (14:00, 1 h)  [9, 10]: [12, 14] ends at 14:00
  ///     (16:00, 4 h)  [8, 10] [12, 14]
  ///     (16:00, 5 h)  empty: the block has less
  ///     (13:00, 0 h)  empty
  ///
  /// For work that ends at `pos` itself, cut the block there and search from a little later:
  ///
  ///     block.intersection(block.beginTime(), pos).getBlockAtPos4DurByEnd(pos + seconds(1), dur);
  TimeBlock getBlockAtPos4DurByEnd(boost::posix_time::ptime const& pos,
                                   boost::posix_time::time_duration const& dur) const;

  // ---- Text and JSON

  /// Writes each slot on a line as "[2024-03-05 08:00:00,2024-03-05 12:00:00]:04:00:00", after
  /// `indent` (stream/StringIndent.h). Ends with a line end; writes only that for an empty block.
  void dumpAsRaw(std::ostream& out, StringIndent const& indent) const;
  /// Returns the same text without indent and without the last line end.
  std::string dumpAsString() const;
  /// Binds the block as an array of slots. Reading sorts the slots (TimeSlot's order) but does not
  /// merge or check them; writing sorts them too. To merge the slots read, and have reversed ones
  /// throw:
  ///
  ///     libvarrow::TimeBlock calendar;
  ///     calendar.addTimeBlocks(read);
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  // Sets isOrdered_ by checking the slots. Nothing else establishes the invariant.
  void checkOrder();
  // Returns whether the block is ordered and has no special times.
  bool isOrderedInRealTime() const;
  void addOneByOne(std::vector<TimeSlot> const& additions);
  void unite(std::vector<TimeSlot> const& additions);
  void removeOneByOne(std::vector<TimeSlot> const& cuts);
  void subtract(std::vector<TimeSlot> const& cuts);
  // Returns whether binary searches find the slots in the window. A reversed one is left to the
  // walk over all slots, which checks it.
  bool isNarrowedBy(boost::posix_time::ptime const& start,
                    boost::posix_time::ptime const& end) const {
    return isOrdered_ && !(end < start);
  }
  // Returns the slots of the block, or of `copy`, which receives them in order if they are not.
  std::vector<TimeSlot> const& slotsInOrder(TimeBlock& copy) const;

  std::vector<TimeSlot> timeslots;
  // The invariant "ordered": each slot begins no later than it ends and ends no later than the next
  // begins. Binary searches rely on it. False when it is not known to hold: queries then visit
  // every slot. All changes keep it; only checkOrder() establishes it.
  bool isOrdered_ = true;
};

///@{
/// Writes dumpAsString().
LIBVARROW_API std::ostream& operator<<(std::ostream& out, TimeBlock const& block);
LIBVARROW_API FastStringStream& operator<<(FastStringStream& out, TimeBlock const& block);
///@}

}  // namespace libvarrow
