// A piece of capacity that works faster or slower than the clock.
#pragma once

#include "libvarrow/time/SchedulingTimeSlot.h"

namespace utility {

/// A scheduling slot with a rate: at an efficiency of 0.8 an hour by the clock yields 48 minutes of
/// work, at 1.25 it yields 75.
///
///     time_duration work = hours(2);                        // on [8, 10] at 0.8
///     slot.getEndTimeWithEfficiency(at(8), work);           // 10:00, and work is 24 min
///
/// Work and clock time are converted in whole milliseconds; what is smaller is cut off each time.
/// A negative product or quotient counts as zero, one beyond all durations as +infinity. Special
/// durations (infinities, not-a-date-time) are not converted.
class LIBVARROW_API TimeSlotWithEfficiency : public TimeSlot {
 public:
  /// As TimeSlot's, with an efficiency of 1.
  TimeSlotWithEfficiency() = default;
  /// `efficiency`: work time per clock time, taken as it is.
  TimeSlotWithEfficiency(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end,
                         float blockCount, bool rest, double efficiency,
                         boost::shared_ptr<std::string> shift,
                         boost::posix_time::time_duration const& shiftDur,
                         boost::shared_ptr<TimeSlot> originalSlot);
  /// An efficiency of 1.
  TimeSlotWithEfficiency(boost::posix_time::ptime const& begin, boost::posix_time::ptime const& end,
                         float blockCount, bool rest, boost::shared_ptr<std::string> shift,
                         boost::posix_time::time_duration const& shiftDur,
                         boost::shared_ptr<TimeSlot> originalSlot);

  /// Work time per clock time.
  double getEfficiency() const { return efficiency_; }

  /// The work that the slot holds; zero when it is locked or not usable.
  boost::posix_time::time_duration getDurWithEfficiency() const;

  ///@{
  /// As getBeginTime and getEndTime, with `dur` as work. At an efficiency of exactly 1 nothing is
  /// converted, nor cut off.
  boost::posix_time::ptime getBeginTimeWithEfficiency(boost::posix_time::ptime const& end_time,
                                                      boost::posix_time::time_duration& dur) const;
  boost::posix_time::ptime getBeginTimeWithEfficiency(boost::posix_time::time_duration& dur) const;
  boost::posix_time::ptime getEndTimeWithEfficiency(boost::posix_time::ptime const& begin_time,
                                                    boost::posix_time::time_duration& dur) const;
  boost::posix_time::ptime getEndTimeWithEfficiency(boost::posix_time::time_duration& dur) const;
  ///@}

  ///@{
  /// As TimeSlot's; the efficiencies must be equal too. (Called on a TimeSlot&, TimeSlot's own
  /// operations do not look at them.)
  bool isSameWithoutTime(TimeSlotWithEfficiency const& other) const;
  bool merge(TimeSlotWithEfficiency const& other);
  ///@}

  ///@{
  /// As TimeSlot's; what is not given is this slot's.
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

  /// TimeSlot's text and ", efficiency:0.800000".
  std::string dumpAsString() const;

  /// TimeSlot's keys and "processEfficiency", which may be missing and keeps its value then. After
  /// that the slot's efficiency is cut to four decimals and to single precision, 0.33333 to the
  /// float nearest to 0.3333, a negative one or none to 0. So it is when the slot is written, which
  /// writes the value as it was: a slot that is being written is being changed, and may
  /// merge no more with one that was not.
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  double efficiency_ = 1.0;
};

}  // namespace utility

namespace libvarrow::utility {
using ::utility::TimeSlotWithEfficiency;
}
