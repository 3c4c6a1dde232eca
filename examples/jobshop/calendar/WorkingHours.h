// The working hours and the efficiency of a machine or the shop, as a planner writes them.
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
  libvarrow::TimeBlock closed;                   ///< also taken from them, such as maintenance
  std::optional<double> efficiency;              ///< none: 1

  /// Binds the keys above. Throws cppbind::ParseErrorException when a closed window is reversed.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Returns these hours, with those of `shop` where these are not set. The closed windows of both
  /// apply.
  WorkingHours within(const WorkingHours& shop) const;

  bool isAlways() const;

  /// Returns the working time in [from, to].
  libvarrow::TimeBlock workingTime(const boost::posix_time::ptime& from,
                                   const boost::posix_time::ptime& to) const;
};

}  // namespace jobshop
