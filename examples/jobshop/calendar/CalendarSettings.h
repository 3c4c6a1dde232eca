// The working time of a whole shop, as given in a pipeline file.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstdint>
#include <vector>

#include "calendar/WorkingHours.h"

namespace jobshop {

struct MachineHours : WorkingHours {
  std::uint64_t machine = 0;

  /// Binds the keys of WorkingHours, and "machine", required.
  void setBind(cppbind::Binder* binder, bool bindFields);
};

struct CalendarSettings {
  boost::posix_time::ptime start;  ///< of time unit 0
  boost::posix_time::time_duration timeUnit = boost::posix_time::minutes(1);
  int days = kUsualDays;               ///< length of all calendars
  WorkingHours shop;                   ///< default of every machine
  std::vector<MachineHours> machines;  ///< with their own hours

  static constexpr int kUsualDays = 366;
  static constexpr int kMaxDays = 36'600;

  boost::posix_time::ptime end() const { return start + boost::posix_time::hours(24 * days); }

  /// Binds "start", required, "time_unit", "days", "machines" and the keys of WorkingHours. Throws
  /// cppbind::ParseErrorException when a value is out of range or a machine occurs twice.
  void setBind(cppbind::Binder* binder, bool bindFields);
};

}  // namespace jobshop
