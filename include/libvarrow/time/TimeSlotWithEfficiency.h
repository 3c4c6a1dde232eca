// A piece of capacity that works faster or slower than the clock.
#pragma once

#include "libvarrow/time/SchedulingTimeSlot.h"

namespace utility {

/// A scheduling slot with a work rate: an hour of clock time yields 48 minutes of work at an
/// efficiency of 0.8, and 75 at 1.25.
///
///     time_duration work = hours(2);                        // on [8, 10] at 0.8
///     slot.getEndTimeWithEfficiency(at(8), work);           // 10:00, and work is 24 min
///
/// Conversions between work and clock time truncate to whole milliseconds. A negative product or
/// quotient becomes zero; one beyond the longest duration becomes +infinity. Special durations
/// (infinities, not-a-date-time) are not converted.
class LIBVARROW_API TimeSlotWithEfficiency : public TimeSlot {
 public:
  /// Makes a default TimeSlot with an efficiency of 1.
  TimeSlotWithEfficiency() = default;
  /// Makes a slot with `efficiency`, its work time per clock time, which is not checked.
  TimeSlotWithEfficiency(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end,
                         float blockCount, bool rest, double efficiency,
                         boost::shared_ptr<std::string> shift,
                         boost::posix_time::time_duration const& shiftDur,
                         boost::shared_ptr<TimeSlot> originalSlot);
  /// The same with an efficiency of 1.
  TimeSlotWithEfficiency(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end,
                         float blockCount, bool rest, boost::shared_ptr<std::string> shift,
                         boost::posix_time::time_duration const& shiftDur,
                         boost::shared_ptr<TimeSlot> originalSlot);

  /// Returns work time per clock time.
  double getEfficiency() const { return efficiency_; }

  /// Returns the work that the slot holds; zero when it is locked or not usable.
  boost::posix_time::time_duration getDurWithEfficiency() const;

  ///@{
  /// Returns the time of getBeginTime or getEndTime for `dur` as work time. At an efficiency of
  /// exactly 1 nothing is converted or truncated.
  boost::posix_time::ptime getBeginTimeWithEfficiency(boost::posix_time::ptime const& end_time,
                                                      boost::posix_time::time_duration& dur) const;
  boost::posix_time::ptime getBeginTimeWithEfficiency(boost::posix_time::time_duration& dur) const;
  boost::posix_time::ptime getEndTimeWithEfficiency(boost::posix_time::ptime const& begin_time,
                                                    boost::posix_time::time_duration& dur) const;
  boost::posix_time::ptime getEndTimeWithEfficiency(boost::posix_time::time_duration& dur) const;
  ///@}

  ///@{
  /// Does the same as TimeSlot's function, but requires equal efficiencies. (The functions of
  /// TimeSlot, called on a TimeSlot&, ignore efficiencies.)
  bool isSameWithoutTime(TimeSlotWithEfficiency const& other) const;
  bool merge(TimeSlotWithEfficiency const& other);
  ///@}

  ///@{
  /// Returns a slot as TimeSlot's function does. Omitted arguments are those of this slot.
  TimeSlotWithEfficiency newFromThis(boost::posix_time::ptime const& begin,
                                     boost::posix_time::ptime const& end, float blockCount) const;
  TimeSlotWithEfficiency newFromThis(boost::posix_time::ptime const& begin,
                                     boost::posix_time::ptime const& end, float blockCount,
                                     bool rest) const;
  TimeSlotWithEfficiency newFromThis(boost::posix_time::ptime const& begin,
                                     boost::posix_time::ptime const& end, float blockCount,
                                     bool rest,
                                     boost::posix_time::time_duration const& shiftDur) const;
  TimeSlotWithEfficiency newFromThis(boost::posix_time::ptime const& begin,
                                     boost::posix_time::ptime const& end, float blockCount,
                                     bool rest, boost::posix_time::time_duration const& shiftDur,
                                     double efficiency) const;
  ///@}

  /// Returns TimeSlot's text followed by ", efficiency:0.800000".
  std::string dumpAsString() const;

  /// Binds TimeSlot's keys and "processEfficiency", which is optional: without it the slot keeps
  /// its value. Reading and writing then truncate the slot's efficiency to four decimals in single
  /// precision: 0.33333 becomes the float nearest to 0.3333; a negative one or NaN becomes 0. The
  /// JSON written has the value from before. So writing changes the slot: it may no longer merge
  /// with one that was not written.
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  double efficiency_ = 1.0;
};

}  // namespace utility

namespace libvarrow::utility {
using ::utility::TimeSlotWithEfficiency;
}
