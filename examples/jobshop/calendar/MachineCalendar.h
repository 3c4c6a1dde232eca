// The working time of one machine, in time units.
#pragma once

#include <libvarrow/time/TimeBlock.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <limits>
#include <optional>
#include <vector>

#include "calendar/Efficiency.h"
#include "calendar/ShopClock.h"
#include "calendar/Span.h"
#include "calendar/WorkingHours.h"

namespace jobshop {

/// Calendar of one machine. A time unit is working time only when all of it is; a unit cut by a
/// shift or a break is not.
class MachineCalendar {
 public:
  /// Creates a calendar that always works, at efficiency 1.
  MachineCalendar() = default;
  /// Creates a calendar with `hours` from the clock's start to `end`, which is not before it.
  MachineCalendar(const WorkingHours& hours, const ShopClock& clock,
                  const boost::posix_time::ptime& end);

  bool alwaysWorks() const { return alwaysWorks_; }
  /// Returns true when at least one unit is working time.
  bool hasWorkingTime() const { return alwaysWorks_ || !working_.empty(); }
  /// Returns the end of the calendar; the largest time when it always works.
  Time end() const { return end_; }
  const Efficiency& efficiency() const { return efficiency_; }

  /// Returns the working time that `work` takes here.
  Time timeFor(Time work) const { return efficiency_.timeFor(work); }

  /// Returns the span from the first working time at `from` or later until `time` of it is over;
  /// nothing when the calendar ends before. A span of no time may also be at the end of working
  /// time.
  std::optional<Span> run(Time from, Time time) const;

  /// Returns the spans of working time in [begin, end], or their sum. Precondition: 0 <= begin <=
  /// end.
  std::vector<Span> workingSpans(Time begin, Time end) const;
  Time workingTime(Time begin, Time end) const;
  /// Returns the spans of [begin, end] that are not working time.
  std::vector<Span> gaps(Time begin, Time end) const;

  /// Returns the working time on the clock; empty when the machine always works.
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
