// The working time of a whole shop, as given in a pipeline file.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstdint>
#include <vector>

#include "calendar/WorkingHours.h"

namespace jobshop {

struct MachineHours : WorkingHours {
  std::uint64_t machine = 0;

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

  /// Binds the keys above and those of WorkingHours. Throws cppbind::ParseErrorException when the
  /// calendar ends after the year 9999 or a machine occurs twice.
  void setBind(cppbind::Binder* binder, bool bindFields);
};

/// Returns true for a date and a time. Predicate of fields: files may have infinite times.
bool isPointInTime(const boost::posix_time::ptime& time);

/// Binds "time_unit", by default a minute.
void bindTimeUnit(cppbind::Binder& binder, boost::posix_time::time_duration& timeUnit);

}  // namespace jobshop
