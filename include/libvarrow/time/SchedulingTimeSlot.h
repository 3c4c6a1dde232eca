// A piece of capacity that scheduling algorithms cut and pass on.
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

/// An interval of time with a shift, a count of capacity blocks, flags for locked and usable, tags,
/// and the slot that it was cut from. A value: copies share the strings and slots that it points
/// to.
///
///     TimeSlot slot(at(8), at(12), 2, true, shift, hours(8), nullptr);
///     time_duration work = hours(3);
///     slot.getEndTime(at(10), work);   // 12:00, and work is 1 hour: the rest
///
/// Not to be confused with `libvarrow::TimeSlot` (libvarrow/time/TimeBlock.h), the bare interval
/// of calendars. Neither converts to the other. After `using namespace libvarrow`, which has a
/// namespace `utility` too, write `::utility::TimeSlot`; inside namespace libvarrow,
/// `utility::TimeSlot` is this class.
///
/// Not thread-safe: a slot that one thread changes belongs to that thread.
class LIBVARROW_API TimeSlot {
 public:
  /// Only Frozen has a name in JSON, "frozen". The host defines the meaning of the others.
  enum class Tag : std::size_t { Host0 = 0, Host1 = 1, Frozen = 2 };
  /// The number of tags.
  static constexpr std::size_t kTagCount = 3;

  /// Makes a usable slot: times not-a-date-time, block count 1, not locked, no shift, tags or
  /// origin.
  TimeSlot() = default;
  /// Makes an unlocked slot without tags; `rest` is true for usable capacity. Throws a
  /// traced std::runtime_error (TracedError.h) with both times when end < begin.
  TimeSlot(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end,
           float blockCount, bool rest, boost::shared_ptr<std::string> shift,
           boost::posix_time::time_duration const& shiftDur,
           boost::shared_ptr<TimeSlot> originalSlot);
  TimeSlot(TimeSlot const& other) = default;
  TimeSlot(TimeSlot&& other) = default;
  TimeSlot& operator=(TimeSlot const& other) = default;
  TimeSlot& operator=(TimeSlot&& other) = default;
  virtual ~TimeSlot();

  // ---- Fields. Setters do not validate their arguments.

  ///@{
  /// Returns or sets the begin or the end of the slot. Does not compare one with the other.
  boost::posix_time::ptime const& getBeginTime() const { return begin_time_; }
  void setBeginTime(boost::posix_time::ptime const& begin) { begin_time_ = begin; }
  boost::posix_time::ptime const& getEndTime() const { return end_time_; }
  void setEndTime(boost::posix_time::ptime const& end) { end_time_ = end; }
  ///@}
  ///@{
  /// Returns or sets the number of capacity blocks that the slot offers; may be a fraction.
  float getBlockCount() const { return blockCount_; }
  void setBlockCount(float blockCount) { blockCount_ = blockCount; }
  ///@}
  ///@{
  /// Returns or sets whether the slot is locked. A locked slot has zero duration (getDur).
  bool isLocked() const { return locked_; }
  void setLocked(bool locked) { locked_ = locked; }
  ///@}
  ///@{
  /// Returns or sets whether the slot is usable capacity.
  bool isRest() const { return rest_; }
  void setRest(bool rest) { rest_ = rest; }
  ///@}
  ///@{
  /// Returns or sets the name of the shift, which copies of the slot share; may be null.
  boost::shared_ptr<std::string> const& getShift() const { return shift_; }
  void setShift(boost::shared_ptr<std::string> shift);
  ///@}
  ///@{
  /// Returns or sets the length of the shift, for the host to use.
  boost::posix_time::time_duration const& getShiftDur() const { return shiftDur_; }
  void setShiftDur(boost::posix_time::time_duration const& shiftDur) { shiftDur_ = shiftDur; }
  ///@}
  ///@{
  /// Returns or sets the slot that this one was cut from; may be null. newFromThis copies it.
  boost::shared_ptr<TimeSlot> const& getOriginalSlot() const { return originalSlot_; }
  void setOriginalSlot(boost::shared_ptr<TimeSlot> originalSlot);
  ///@}
  /// Returns all tags, indexed by their values.
  std::bitset<kTagCount> const& getTags() const { return tags_; }
  ///@{
  /// Returns or sets one tag. Both throw std::out_of_range when the value is not that of a Tag.
  bool getTag(Tag tag) const;
  void setTag(Tag tag, bool value);
  ///@}

  // ---- Available capacity

  /// Returns end - begin; zero when the slot is locked or not usable.
  boost::posix_time::time_duration getDur() const;
  /// Returns whether the slot has at least `need` blocks. Also true for an unusable slot, as its
  /// block count is not the obstacle.
  bool hasNeedBlock(float need) const;
  /// Returns whether the slot is usable and, if it is frozen, `allowed` contains Tag::Frozen.
  bool isValid(std::unordered_set<Tag> const& allowed) const;

  // ---- Cutting and merging

  /// Returns whether both are usable or both are not. Compares nothing else.
  bool isSameWithoutTime(TimeSlot const& other) const;
  /// Merges `other` into this slot when it touches and is the same kind of capacity: [8, 10] and
  /// [10, 12] make [8, 12]. The same kind means: cut from the same slot, and equal in usability,
  /// block count, shift name and tags; the lock and the shift's length do not matter. Otherwise
  /// changes nothing and returns false. Overlapping slots never merge.
  bool merge(TimeSlot const& other);
  /// Returns an unlocked slot of the same usability, shift, shift length, origin and tags. Throws
  /// as the constructor does.
  TimeSlot newFromThis(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end,
                       float blockCount) const;

  // ---- Consuming duration

  /// Returns when work of `dur` must begin to end at `end_time`, and sets `dur` to the part that
  /// does not fit: of [8, 12], (12:00, 3 h) gives 9:00 and leaves zero, (12:00, 5 h) gives 8:00 and
  /// leaves 1 h. An unusable slot returns its begin and leaves `dur` unchanged. Ignores the lock.
  /// Aborts when `end_time` lies outside a usable slot; both ends lie inside.
  boost::posix_time::ptime getBeginTime(boost::posix_time::ptime const& end_time,
                                        boost::posix_time::time_duration& dur) const;
  /// The same from the slot's end.
  boost::posix_time::ptime getBeginTime(boost::posix_time::time_duration& dur) const;

  /// Returns when work of `dur` that begins at `begin_time` ends: the mirror image. Of [8, 12],
  /// (8:00, 4 h) gives 12:00 and leaves zero. An unusable slot returns its end.
  boost::posix_time::ptime getEndTime(boost::posix_time::ptime const& begin_time,
                                      boost::posix_time::time_duration& dur) const;
  /// The same from the slot's begin.
  boost::posix_time::ptime getEndTime(boost::posix_time::time_duration& dur) const;

  // ---- Order, text and JSON

  /// Compares begins, then ends.
  bool operator<(TimeSlot const& other) const;
  /// The same order, as a function for algorithms.
  static bool compareLess(TimeSlot const& a, TimeSlot const& b) { return a < b; }

  /// Returns one line, "[2024-03-05 08:00:00,2024-03-05 12:00:00], block count:1.000000,
  /// dur:04:00:00, valid,unlock,early tags:000". Frozen is the first of the tags.
  std::string dumpAsString() const;

  /// Binds {"timeBegin": "2024-03-05 08:00:00", "timeEnd": "2024-03-05 12:00:00",
  /// "shift": "early", "blockCount": 1, "tags": ["frozen"]}. Only "blockCount" is optional; without
  /// it the slot keeps its count. Ignores unknown tag names and logs them at ERROR. Begin and end
  /// may be in any order.
  ///
  /// Not all of it can be read back: "tags" is always written empty, and a slot without shift
  /// writes null, which is rejected.
  void setBind(cppbind::Binder* binder, bool bindFields);

 protected:
  /// Copies the tags; for derived classes that make slots from others.
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
