// A repeated time of day, such as a shift or a break.
#pragma once

#include <libvarrow/time/WeeklyPattern.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <string>
#include <vector>

namespace cppbind {
class Binder;
}

namespace jobshop {

/// Daily window, in JSON {"from": "22:00:00", "to": "30:00:00", "days": ["mon", "tue"]}.
struct DayWindow {
  boost::posix_time::time_duration from;  ///< from midnight
  /// From the same midnight: a window may end on the next day and has at most 24 hours.
  boost::posix_time::time_duration to;
  std::vector<std::string> days = everyDay();  ///< on which it starts

  /// Returns "mon" to "sun".
  static const std::vector<std::string>& everyDay();

  libvarrow::Weekdays weekdays() const;

  /// Binds the keys above. Throws cppbind::ParseErrorException when the window has no time or more
  /// than 24 hours.
  void setBind(cppbind::Binder* binder, bool bindFields);
};

}  // namespace jobshop
