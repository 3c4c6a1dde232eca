// The working time of a whole shop, as a pipeline file says it.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstdint>
#include <vector>

#include "calendar/WorkingHours.h"

namespace jobshop {

struct MachineHours : WorkingHours {
  std::uint64_t machine = 0;

  /// The keys of WorkingHours, and "machine", required.
  void setBind(cppbind::Binder* binder, bool bindFields);
};

struct CalendarSettings {
  boost::posix_time::ptime start;  ///< of time unit 0
  boost::posix_time::time_duration timeUnit = boost::posix_time::minutes(1);
  int days = kUsualDays;               ///< how far calendars reach
  WorkingHours shop;                   ///< of every machine, unless
  std::vector<MachineHours> machines;  ///< it has hours of its own

  static constexpr int kUsualDays = 366;
  static constexpr int kMostDays = 36'600;

  boost::posix_time::ptime end() const { return start + boost::posix_time::hours(24 * days); }

  /// Keys "start", required, "time_unit", "days", "machines" and those of WorkingHours. Throws
  /// cppbind::ParseErrorException for values out of range and for a machine that comes twice.
  void setBind(cppbind::Binder* binder, bool bindFields);
};

}  // namespace jobshop
