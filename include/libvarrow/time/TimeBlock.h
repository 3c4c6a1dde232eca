// Calendars and capacities: an interval of time, and a set of such intervals.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <iosfwd>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "cppbind/Assert.h"
#include "libvarrow/Export.h"

namespace cppbind {
class Binder;
}

namespace libvarrow {

class StringIndent;

/// One interval of absolute time, [time_begin, time_end]. A plain value.
///
/// Not to be confused with `utility::TimeSlot` (libvarrow/time/SchedulingTimeSlot.h), a piece of
/// capacity with a shift, a block count and flags. Neither converts to the other.
class LIBVARROW_API TimeSlot {
 public:
  /// Both times not-a-date-time.
  TimeSlot() = default;
  /// Asserts begin <= end.
  TimeSlot(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end)
      : time_begin(begin), time_end(end) {
    CPPBIND_ASSERT(begin <= end);
  }

  /// time_end - time_begin.
  boost::posix_time::time_duration dur() const { return time_end - time_begin; }

  /// Whether the slot shares time with [t1, t2]: open, so [8, 10] and [10, 12] do not overlap.
  /// Checks t1 <= t2.
  bool overlap(boost::posix_time::ptime const& t1, boost::posix_time::ptime const& t2) const;
  /// The same of [t1, t2] and [p1, p2]. Checks t1 <= t2, then p1 <= p2.
  static bool overlap(boost::posix_time::ptime const& t1, boost::posix_time::ptime const& t2,
                      boost::posix_time::ptime const& p1, boost::posix_time::ptime const& p2);

  ///@{
  /// For lower-bound searches in a vector of slots by a time.
  static bool CompareByTimeBegin(TimeSlot const& slot, boost::posix_time::ptime const& t) {
    return slot.time_begin < t;
  }
  static bool CompareByTimeEnd(TimeSlot const& slot, boost::posix_time::ptime const& t) {
    return slot.time_end < t;
  }
  ///@}

  /// By time_begin, then by time_end.
  bool operator<(TimeSlot const& other) const {
    return time_begin < other.time_begin ||
           (time_begin == other.time_begin && time_end < other.time_end);
  }

  /// {"timeBegin": "2024-03-05 08:00:00", "timeEnd": "2024-03-05 12:00:00"}; begin and end may
  /// stand in any order.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Where it begins. Assigning checks nothing: a slot may come to end before it begins.
  boost::posix_time::ptime time_begin;
  /// Where it ends.
  boost::posix_time::ptime time_end;
};

/// A set of intervals: when a resource is available. A value.
///
///     libvarrow::TimeBlock shift(at(8), at(16));      // 8:00 to 16:00
///     shift.removeTimeBlock(at(12), at(13));          // [8, 12] [13, 16]
///     shift.getTotalDur();                            // 7 hours
///     shift.getBlockAtPos4Dur(at(9), hours(2));       // [9, 11]
///
/// Asserts and checks both end the process and differ only in what they print; neither prints the
/// times, so look at what comes from outside first.
///
/// addTimeBlock and removeTimeBlock keep the slots sorted and disjoint; added ones are never empty
/// and never touch. Slots that come from a vector or from JSON are taken as they are: whoever gives
/// touching, overlapping or reversed ones owns what the operations then do, which is what their
/// comments say, slot by slot.
///
/// Special times (infinities, not-a-date-time) are ordered as the date-time library orders them:
/// -infinity, all real times, not-a-date-time, +infinity.
///
/// Searching is logarithmic in the number of slots as long as each slot begins no later than it
/// ends and ends no later than the next begins; else it is linear. A block that was out of order
/// regains fast searches from a change that leaves one slot or none, and from a removal or an
/// addition of many slots that leaves it in order. A single change in the middle moves the slots
/// behind it.
///
/// A change that runs out of memory throws std::bad_alloc and leaves the block as it was. (A read
/// from JSON that fails, for whatever reason, leaves a part of the slots.)
///
/// Threads may share a block that none of them changes. Writing one as JSON sorts its slots, which
/// is a change only if they were not sorted.
class LIBVARROW_API TimeBlock {
 public:
  /// No slots. For results that are handed out by reference.
  static const TimeBlock empty_block;

  TimeBlock() = default;
  /// The one slot [begin, end]; none when the times are equal. Reversed times throw as addTimeBlock
  /// does.
  TimeBlock(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end);
  ///@{
  /// The slots as they are: neither sorted, nor merged, nor checked. Explicit, as no list of slots
  /// should become a block unnoticed.
  explicit TimeBlock(std::vector<TimeSlot> const& slots);
  explicit TimeBlock(std::vector<TimeSlot>&& slots);
  ///@}

  // ---- Union and subtraction

  /// Adds [bstart, bend] and merges it with all slots that it shares time with or touches:
  /// [8, 12] and [12, 14] become [8, 14]. An empty interval adds nothing.
  ///
  /// A reversed one throws a traced std::runtime_error (TracedError.h), "2024-03-05 14:00:00" and
  /// "2024-03-05 12:00:00" with nothing between them, and leaves the block as it was.
  void addTimeBlock(boost::posix_time::ptime bstart, boost::posix_time::ptime bend);

  /// addTimeBlock of each slot of `other`, in order; a reversed slot throws after those before it
  /// were added. Many slots at once cost one pass over both blocks, so slots in no order are best
  /// collected first: block.addTimeBlocks(TimeBlock(std::move(vectorOfSlots))).
  void addTimeBlocks(TimeBlock const& other);

  /// Takes [start, end] out of every slot that shares time with it: [8, 12] less [10, 11] is
  /// [8, 10] and [11, 12]. A slot that only touches it stays whole. Asserts start <= end, where
  /// addTimeBlock throws.
  ///
  /// An empty interval inside a slot splits it into two that touch: [8, 12] less [10, 10] is
  /// [8, 10] and [10, 12].
  void removeTimeBlock(boost::posix_time::ptime start, boost::posix_time::ptime end);

  ///@{
  /// removeTimeBlock of each slot of `other`, in order; of null, nothing. Many slots at once cost
  /// one pass over both blocks.
  void removeTimeBlock(TimeBlock const& other);
  void removeTimeBlock(TimeBlock const* other);
  ///@}

  // ---- Relation to an interval

  /// The time that the block has inside [start, end]: [8, 12] in [10, 14] is [10, 12]; in [12, 14]
  /// nothing. Asserts start <= end unless the block is empty.
  TimeBlock intersection(boost::posix_time::ptime const& start,
                         boost::posix_time::ptime const& end) const;

  /// What two intervals (begin, end) have in common, both ends included: [8, 12] and [12, 13] have
  /// [12, 12]. False, with `result` untouched, when they are apart.
  static bool intersection(std::pair<boost::posix_time::ptime, boost::posix_time::ptime> const& a,
                           std::pair<boost::posix_time::ptime, boost::posix_time::ptime> const& b,
                           std::pair<boost::posix_time::ptime, boost::posix_time::ptime>& result);

  /// Whether some slot shares time with [start, end]: open, [8, 12] does not overlap [12, 13].
  /// Checks start <= end; asserts that the block has slots.
  bool overlap(boost::posix_time::ptime const& start, boost::posix_time::ptime const& end) const;

  /// The same, and false for an empty block. Asserts start <= end unless the block is empty.
  bool hasIntersection(boost::posix_time::ptime const& start,
                       boost::posix_time::ptime const& end) const;

  /// Whether one slot contains [start, end], both ends included: [8, 12] has [8, 12] and [12, 12].
  /// Asserts start <= end.
  bool haveBlock(boost::posix_time::ptime start, boost::posix_time::ptime end) const;

  /// Whether one slot has at least `dur` inside [start, end]. A slot that touches has zero there:
  /// in [12, 14], [8, 12] has a `dur` of zero, but nothing longer. False for reversed times.
  bool haveBlock(boost::posix_time::ptime start, boost::posix_time::ptime end,
                 boost::posix_time::time_duration dur) const;

  // ---- The slots

  /// The first slot that ends at `t` or later, by binary search; the end when there is none.
  static std::vector<TimeSlot>::const_iterator lowerBound(std::vector<TimeSlot> const& slots,
                                                          boost::posix_time::ptime const& t);

  ///@{
  /// Begin of the first slot, end of the last. Assert that the block has slots.
  boost::posix_time::ptime const& beginTime() const {
    CPPBIND_ASSERT(!this->timeslots.empty());
    return timeslots.front().time_begin;
  }
  boost::posix_time::ptime const& endTime() const {
    CPPBIND_ASSERT(!this->timeslots.empty());
    return timeslots.back().time_end;
  }
  ///@}
  /// Whether there are no slots.
  bool empty() const { return timeslots.empty(); }
  /// In the order of time, unless they came out of order. Valid until the block is changed.
  std::vector<TimeSlot> const& getBlocks() const& { return timeslots; }
  /// Of a block that is about to vanish, as in block.intersection(from, to).getBlocks().
  std::vector<TimeSlot> getBlocks() && { return std::move(timeslots); }

  /// By the begin of the first slot alone. Asserts that both blocks have slots.
  bool operator<(TimeBlock const& other) const;

  // ---- How much time

  /// The lengths of all slots together; zero for an empty block.
  boost::posix_time::time_duration getTotalDur() const;

  /// The block's time in a window: [8, 12] has 1 hour in [11, 14]. Checks that the window is
  /// neither empty nor reversed, nor any slot that it looks at.
  boost::posix_time::time_duration getTotalDur(
      boost::posix_time::ptime const& statistical_time_begin,
      boost::posix_time::ptime const& statistical_time_end) const;

  /// The same of whole days, the last one included: (March 1, March 1) is all of March 1.
  boost::posix_time::time_duration getTotalDur(boost::gregorian::date const& date_begin,
                                               boost::gregorian::date const& date_end) const;

  /// @name Days
  /// A day d runs from d 0:00 to d+1 0:00. The queries differ in what counts:
  ///
  ///     slot                            touched     midnight inside   full days
  ///     March 1 8:00  to March 2 0:00   1, 2        2                 none
  ///     March 1 0:00  to March 3 0:00   1, 2, 3     1, 2, 3           1, 2
  ///     March 1 0:00  to March 1 12:00  1           1                 none
  ///
  /// A begin less than a second after midnight counts as midnight for the latter two. A block whose
  /// slots are broken so that its days cannot be told is logged at ERROR, "timeBlock: \n%s \n",
  /// before the process ends; an infinite slot whose days would have to be listed throws a traced
  /// std::runtime_error.
  ///@{

  /// The days that slots touch, ascending: a shift to midnight touches the next day too, with no
  /// time (getStatisticByDay tells). Days that are out of order fail an assertion.
  std::vector<boost::gregorian::date> getAllDates() const;

  /// The days whose 0:00 lies inside a slot, ends included, ascending: not the full days, which
  /// getFullDayInvolveStatus and haveFullDay tell. Days that are out of order
  /// fail an assertion; a slot that ends on a day before its begin has none.
  std::vector<boost::gregorian::date> getDatesContainFullDay() const;

  /// For each day from date_begin to date_end, both included: whether a slot touches it. Checks
  /// date_begin <= date_end, and that no slot it looks at ends on a day before its begin.
  std::vector<bool> getInvolveStatus(boost::gregorian::date date_begin,
                                     boost::gregorian::date date_end) const;

  /// For each day from date_begin to date_end, both included: whether one slot covers it whole. In
  /// a block that is out of order, slots after the first that has full days beyond date_end only
  /// are not looked at. Checks date_begin <= date_end.
  std::vector<bool> getFullDayInvolveStatus(boost::gregorian::date date_begin,
                                            boost::gregorian::date date_end) const;

  /// The block's time on each day that slots touch: of March 1 8:00 to March 2 0:00, 16 hours on
  /// the first and zero on the second.
  std::map<boost::gregorian::date, boost::posix_time::time_duration> getStatisticByDay() const;

  /// Whether one slot, cut to [start, end], covers at least `days` full days. Below 1, `days` may
  /// find slots that lie outside the window.
  bool haveCompleteDays(boost::posix_time::ptime const& start, boost::posix_time::ptime const& end,
                        int days) const;

  /// Whether one slot contains all of day `d`.
  bool haveFullDay(boost::gregorian::date d) const;

  ///@}
  // ---- Where working time ends. The two searches are not mirror images.

  /// The first `dur` of the block's time from `pos` on. With [8, 10] [12, 14] [16, 18]:
  ///
  ///     (9:00, 2 h)      [9, 10] [12, 13]
  ///     (9:00, 7 h)      empty: the block has not as much
  ///     (17:00, 30 min)  empty: what ends in the last slot counts as not found
  ///     (11:00, 0 h)     [11:00, 11:00:00.000001], whether or not the block has time at 11:00
  ///     (19:00, 0 h)     empty: no slot ends at `pos` or later
  ///
  /// So a block of one slot finds nothing, and an empty result means that the block has not enough,
  /// or just so that the last slot is needed. To search to the end, put a slot behind the horizon:
  ///
  ///     block.addTimeBlock(block.endTime() + hours(24), block.endTime() + hours(25));
  ///
  /// A negative `dur` throws as addTimeBlock does. In a block that is out of order each slot counts
  /// from where the one before it was left.
  TimeBlock getBlockAtPos4Dur(boost::posix_time::ptime const& pos,
                              boost::posix_time::time_duration const& dur) const;

  /// The last `dur` of the block's time in the slots that end before `pos`: neither one that
  /// contains `pos` nor one that ends there is used. With [8, 10] [12, 14] [16, 18]:
  ///
  ///     (13:00, 1 h)  [9, 10]
  ///     (16:00, 3 h)  [9, 10] [12, 14]
  ///     (14:00, 1 h)  [9, 10]: [12, 14] ends at 14:00
  ///     (16:00, 4 h)  [8, 10] [12, 14]
  ///     (16:00, 5 h)  empty: the block has not as much
  ///     (13:00, 0 h)  empty
  ///
  /// For work that ends at `pos` itself, cut the block there and search from a little later:
  ///
  ///     block.intersection(block.beginTime(), pos).getBlockAtPos4DurByEnd(pos + seconds(1), dur);
  TimeBlock getBlockAtPos4DurByEnd(boost::posix_time::ptime const& pos,
                                   boost::posix_time::time_duration const& dur) const;

  // ---- Text and JSON

  /// Slots as "[2024-03-05 08:00:00,2024-03-05 12:00:00]:04:00:00", each on a line of its own
  /// behind `indent` (stream/StringIndent.h), and a line end; for an empty block only that.
  void dumpAsRaw(std::ostream& out, StringIndent const& indent) const;
  /// The same without indent and without a line end at the end.
  std::string dumpAsString() const;

  /// The block is an array of slots in JSON. Slots read are sorted (TimeSlot's order), but neither
  /// merged nor checked; writing sorts them too. To merge and check what was read, and have
  /// reversed slots throw:
  ///
  ///     libvarrow::TimeBlock calendar;
  ///     calendar.addTimeBlocks(read);
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  void addOneByOne(std::vector<TimeSlot> const& additions);
  void unite(std::vector<TimeSlot> const& additions);
  void removeOneByOne(std::vector<TimeSlot> const& cuts);
  void subtract(std::vector<TimeSlot> const& cuts);

  std::vector<TimeSlot> timeslots;
  // Every slot begins no later than it ends and ends no later than the next begins. Binary
  // searches rely on it; a block of which it is not known is searched slot by slot.
  bool isOrdered_ = true;
};

}  // namespace libvarrow
