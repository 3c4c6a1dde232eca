// A time of day that comes again, such as a shift or a break.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <string>
#include <vector>

namespace cppbind {
class Binder;
}

namespace jobshop {

/// In JSON: {"from": "22:00:00", "to": "30:00:00", "days": ["mon", "tue"]}.
struct DayWindow {
  boost::posix_time::time_duration from;  ///< from midnight
  /// From the same midnight: the window of a day may run into the next, at most 24 hours in all.
  boost::posix_time::time_duration to;
  std::vector<std::string> days = everyDay();  ///< on which it starts

  /// "mon" to "sun".
  static const std::vector<std::string>& everyDay();

  bool startsOn(const boost::gregorian::date& day) const;

  /// Throws cppbind::ParseErrorException for anything else than the above. Key "days" may be
  /// missing for every day.
  void setBind(cppbind::Binder* binder, bool bindFields);
};

}  // namespace jobshop
