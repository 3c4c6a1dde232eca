// When a machine, or the shop, works, and how fast: as a planner writes it.
#pragma once

#include <libvarrow/time/TimeBlock.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <optional>
#include <vector>

#include "calendar/DayWindow.h"

namespace jobshop {

struct WorkingHours {
  std::optional<std::vector<DayWindow>> shifts;  ///< none: around the clock
  std::optional<std::vector<DayWindow>> breaks;  ///< taken from the shifts
  libvarrow::TimeBlock closed;                   ///< taken from them too, such as for maintenance
  std::optional<double> efficiency;              ///< none: 1

  /// Keys "shifts", "breaks", "closed" and "efficiency", none of them required. Throws
  /// cppbind::ParseErrorException for an efficiency out of range, and for a closed window that is
  /// not one.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// These hours with those of `shop` where they say nothing. What the shop has closed is closed
  /// here too.
  WorkingHours within(const WorkingHours& shop) const;

  bool isAlways() const;

  /// The working time in [from, to].
  libvarrow::TimeBlock workingTime(const boost::posix_time::ptime& from,
                                   const boost::posix_time::ptime& to) const;
};

}  // namespace jobshop
