// A piece of capacity, as scheduling algorithms cut it up and hand it around.
#pragma once

#include <bitset>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/shared_ptr.hpp>
#include <cstddef>
#include <string>
#include <unordered_set>

#include "libvarrow/Export.h"

namespace cppbind {
class Binder;
}

namespace utility {

/// An interval of time together with its shift, how many capacity blocks it offers, whether it is
/// locked or usable at all, tags, and the slot it was cut from. A value: copies share the strings
/// and slots that are pointed to.
///
///     TimeSlot slot(at(8), at(12), 2, true, shift, hours(8), nullptr);
///     time_duration work = hours(3);
///     slot.getEndTime(at(10), work);   // 12:00, and work is 1 hour: what does not fit
///
/// Not to be confused with `libvarrow::TimeSlot` (libvarrow/time/TimeBlock.h), the bare interval
/// of calendars. Neither converts to the other. Code that says `using namespace libvarrow`, which
/// has a namespace `utility` too, writes `::utility::TimeSlot`; inside namespace libvarrow
/// `utility::TimeSlot` is this class.
///
/// Not locked: a slot that one thread changes belongs to that thread.
class LIBVARROW_API TimeSlot {
 public:
  /// Only Frozen has a name in JSON, "frozen". The others are the host's.
  enum class Tag : std::size_t { Host0 = 0, Host1 = 1, Frozen = 2 };
  /// How many tags there are.
  static constexpr std::size_t kTagCount = 3;

  /// Times not-a-date-time, block count 1, usable, not locked, no shift, tags or origin.
  TimeSlot() = default;
  /// Not locked and without tags; `rest`: true for usable capacity. Throws a traced
  /// std::runtime_error (TracedError.h) with both times when end < begin.
  TimeSlot(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end,
           float blockCount, bool rest, boost::shared_ptr<std::string> shift,
           boost::posix_time::time_duration const& shiftDur,
           boost::shared_ptr<TimeSlot> originalSlot);
  TimeSlot(TimeSlot const& other) = default;
  TimeSlot(TimeSlot&& other) = default;
  TimeSlot& operator=(TimeSlot const& other) = default;
  TimeSlot& operator=(TimeSlot&& other) = default;
  virtual ~TimeSlot();

  // ---- Fields. Setters store what they are given, unchecked.

  ///@{
  /// Where the slot begins and ends; setting one does not look at the other.
  boost::posix_time::ptime const& getBeginTime() const { return begin_time_; }
  void setBeginTime(boost::posix_time::ptime const& begin) { begin_time_ = begin; }
  boost::posix_time::ptime const& getEndTime() const { return end_time_; }
  void setEndTime(boost::posix_time::ptime const& end) { end_time_ = end; }
  ///@}
  ///@{
  /// Capacity blocks that the slot offers, fractions included.
  float getBlockCount() const { return blockCount_; }
  void setBlockCount(float blockCount) { blockCount_ = blockCount; }
  ///@}
  ///@{
  /// A locked slot has no duration (getDur), whatever its times.
  bool isLocked() const { return locked_; }
  void setLocked(bool locked) { locked_ = locked; }
  ///@}
  ///@{
  /// True: the slot is usable capacity.
  bool isRest() const { return rest_; }
  void setRest(bool rest) { rest_ = rest; }
  ///@}
  ///@{
  /// Name of the shift; shared with the copies of the slot; may be null.
  boost::shared_ptr<std::string> const& getShift() const { return shift_; }
  void setShift(boost::shared_ptr<std::string> shift);
  ///@}
  ///@{
  /// The length of the shift, for the host to use.
  boost::posix_time::time_duration const& getShiftDur() const { return shiftDur_; }
  void setShiftDur(boost::posix_time::time_duration const& shiftDur) { shiftDur_ = shiftDur; }
  ///@}
  ///@{
  /// The slot this one was cut from, as the host sets it; may be null. newFromThis copies it.
  boost::shared_ptr<TimeSlot> const& getOriginalSlot() const { return originalSlot_; }
  void setOriginalSlot(boost::shared_ptr<TimeSlot> originalSlot);
  ///@}
  /// All tags, by their values.
  std::bitset<kTagCount> const& getTags() const { return tags_; }
  ///@{
  /// One tag. Both throw std::out_of_range for a value that is no Tag.
  bool getTag(Tag tag) const;
  void setTag(Tag tag, bool value);
  ///@}

  // ---- What the slot offers

  /// end - begin; zero when the slot is locked or not usable.
  boost::posix_time::time_duration getDur() const;
  /// Whether it has `need` blocks. One that is not usable says yes: it is not what stands in the
  /// way.
  bool hasNeedBlock(float need) const;
  /// Whether the slot is usable and, if it is frozen, `allowed` has Tag::Frozen.
  bool isValid(std::unordered_set<Tag> const& allowed) const;

  // ---- Cutting and gluing

  /// Whether both are usable or both are not. Nothing else is compared.
  bool isSameWithoutTime(TimeSlot const& other) const;
  /// Takes `other` in when it is the same kind of capacity and touches: [8, 10] and [10, 12] make
  /// [8, 12]. The same kind: cut from the same slot, and equal in usability, block count, shift
  /// name and tags; being locked and the shift's length do not count. Else false, and nothing
  /// changes; overlapping slots never merge.
  bool merge(TimeSlot const& other);
  /// A slot of the same usability, shift, shift length, origin and tags; not locked. Throws as the
  /// constructor does.
  TimeSlot newFromThis(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end,
                       float blockCount) const;

  // ---- Using duration up

  /// When work of `dur` has to begin to end at `end_time`, which is checked to lie in the slot,
  /// ends included. `dur` becomes what does not fit: of [8, 12], (12:00, 3 h) gives 9:00 and leaves
  /// zero, (12:00, 5 h) gives 8:00 and leaves 1 h. A slot that is not usable gives its begin and
  /// leaves `dur` as it is. A lock is not looked at.
  boost::posix_time::ptime getBeginTime(boost::posix_time::ptime const& end_time,
                                        boost::posix_time::time_duration& dur) const;
  /// From the slot's end.
  boost::posix_time::ptime getBeginTime(boost::posix_time::time_duration& dur) const;

  /// When work of `dur` ends that begins at `begin_time`: the mirror image. Of [8, 12], (8:00, 4 h)
  /// gives 12:00 and leaves zero. A slot that is not usable gives its end.
  boost::posix_time::ptime getEndTime(boost::posix_time::ptime const& begin_time,
                                      boost::posix_time::time_duration& dur) const;
  /// From the slot's begin.
  boost::posix_time::ptime getEndTime(boost::posix_time::time_duration& dur) const;

  // ---- Order, text and JSON

  /// By begin, then by end.
  bool operator<(TimeSlot const& other) const;
  /// The same order, for algorithms.
  static bool compareLess(TimeSlot const& a, TimeSlot const& b) { return a < b; }

  /// "[2024-03-05 08:00:00,2024-03-05 12:00:00], block count:1.000000, dur:04:00:00,
  /// valid,unlock,early tags:000" on one line; of the tags Frozen comes first.
  std::string dumpAsString() const;

  /// Does not read back all that it writes.
  /// {"timeBegin": "2024-03-05 08:00:00", "timeEnd": "2024-03-05 12:00:00", "shift": "early",
  /// "blockCount": 1, "tags": ["frozen"]}. Only "blockCount" may be missing and keeps its value
  /// then. A tag without a name is logged at ERROR and passed over. "tags" is written empty,
  /// whatever the slot's tags are; a slot without shift writes null, which is not read back. Begin
  /// and end may stand in any order.
  void setBind(cppbind::Binder* binder, bool bindFields);

 protected:
  /// For slots that a derived class makes from others.
  void copyTags(TimeSlot const& other) { tags_ = other.tags_; }

 private:
  bool isSameKind(TimeSlot const& other) const;
  void readTags(cppbind::Binder& binder);

  boost::posix_time::ptime begin_time_;
  boost::posix_time::ptime end_time_;
  float blockCount_ = 1.0F;
  bool locked_ = false;
  bool rest_ = true;
  boost::shared_ptr<std::string> shift_;
  boost::posix_time::time_duration shiftDur_;
  std::bitset<kTagCount> tags_;
  boost::shared_ptr<TimeSlot> originalSlot_;
};

}  // namespace utility

namespace libvarrow::utility {
using ::utility::TimeSlot;
}
