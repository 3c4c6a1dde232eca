// The working time of one machine, in time units.
#pragma once

#include <libvarrow/time/TimeBlock.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <limits>
#include <optional>
#include <vector>

#include "ShopClock.h"
#include "calendar/Efficiency.h"
#include "calendar/Span.h"
#include "calendar/WorkingHours.h"

namespace jobshop {

/// A time unit is working time when all of it is: what shifts and breaks cut a unit in two, is not
/// worked.
class MachineCalendar {
 public:
  /// Always works, at efficiency 1.
  MachineCalendar() = default;
  /// Works as `hours` say from the clock's start to `end`, which is not before it.
  MachineCalendar(const WorkingHours& hours, const ShopClock& clock,
                  const boost::posix_time::ptime& end);

  bool alwaysWorks() const { return alwaysWorks_; }
  /// False when there is not a single unit of working time.
  bool everWorks() const { return alwaysWorks_ || working_.getBlocks().size() > 1; }
  /// Where the calendar ends; the largest time when it always works.
  Time end() const { return end_; }
  const Efficiency& efficiency() const { return efficiency_; }

  /// The working time that `work` takes here.
  Time timeFor(Time work) const { return efficiency_.timeFor(work); }

  /// From the first working time at `from` or later until `time` of it is over; nothing when the
  /// calendar ends before. No time at all may also lie where working time ends.
  std::optional<Span> run(Time from, Time time) const;

  /// The stretches of working time in [begin, end], and how much that is. 0 <= begin <= end.
  std::vector<Span> workingSpans(Time begin, Time end) const;
  Time workingTime(Time begin, Time end) const;
  /// What [begin, end] has besides.
  std::vector<Span> gaps(Time begin, Time end) const;

  /// The working time on the clock, unless the machine always works. The last slot lies beyond
  /// the calendar's end and is no working time.
  const libvarrow::TimeBlock& working() const { return working_; }

 private:
  Span toSpan(const libvarrow::TimeSlot& slot) const;
  void addWhole(const libvarrow::TimeSlot& slot);

  Efficiency efficiency_;
  ShopClock clock_;
  bool alwaysWorks_ = true;
  Time end_ = std::numeric_limits<Time>::max();
  libvarrow::TimeBlock working_;
};

}  // namespace jobshop
