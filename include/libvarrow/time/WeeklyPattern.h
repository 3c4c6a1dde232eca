// Calendars from shifts that repeat every week.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <initializer_list>
#include <set>
#include <vector>

#include "libvarrow/Export.h"
#include "libvarrow/time/TimeBlock.h"

namespace libvarrow {

/// A set of days of the week, for example {boost::gregorian::Monday, boost::gregorian::Friday}.
class Weekdays {
 public:
  /// Makes the set of these days.
  constexpr Weekdays(std::initializer_list<boost::date_time::weekdays> days) {
    for (const boost::date_time::weekdays day : days) add(day);
  }
  /// Returns all seven days.
  static constexpr Weekdays all() {
    using namespace boost::date_time;
    return {Sunday, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday};
  }
  /// Returns Monday to Friday.
  static constexpr Weekdays mondayToFriday() {
    using namespace boost::date_time;
    return {Monday, Tuesday, Wednesday, Thursday, Friday};
  }

  /// Adds a day.
  constexpr void add(boost::date_time::weekdays day) { bits_ |= 1U << day; }
  /// Returns whether the set has the day.
  constexpr bool contains(boost::date_time::weekdays day) const { return (bits_ >> day & 1U) != 0; }

 private:
  unsigned bits_ = 0;
};

/// Shifts that repeat every week, minus breaks and holidays. A value type.
///
///     libvarrow::WeeklyPattern pattern;
///     pattern.addShift(hours(6), hours(14), libvarrow::Weekdays::mondayToFriday());
///     pattern.addShift(hours(22), hours(30), {boost::gregorian::Saturday});  // to Sunday 6:00
///     pattern.addBreak(hours(10), hours(10) + minutes(30));                  // on every day
///     pattern.addHoliday(date(2024, 5, 1));
///     libvarrow::TimeBlock calendar = pattern.between(date(2024, 1, 1), date(2024, 12, 31));
///
/// Times count from 0:00 of the day on which a shift or a break begins, without daylight saving.
class LIBVARROW_API WeeklyPattern {
 public:
  ///@{
  /// Adds a shift or a break that begins at `from` on each of `days`. A break interrupts all
  /// shifts. Shifts may touch or overlap: their time counts once. A shift or break with `to` after
  /// 24 h ends on the next day. Throws a traced std::runtime_error unless 0 h <= from < 24 h and
  /// from < to <= from + 24 h.
  void addShift(boost::posix_time::time_duration const& from,
                boost::posix_time::time_duration const& to, Weekdays days = Weekdays::all());
  void addBreak(boost::posix_time::time_duration const& from,
                boost::posix_time::time_duration const& to, Weekdays days = Weekdays::all());
  ///@}
  /// Adds a day on which no shift begins. A shift that begins on the day before runs to its end. To
  /// close the hours from 0:00 to 24:00 instead, remove them from the result.
  void addHoliday(boost::gregorian::date const& day);

  /// Returns the working time from `first` 0:00 to `last` 24:00. A night shift of the day before
  /// `first` counts from 0:00, one that begins on `last` until 24:00, so that adjacent ranges
  /// together lose no time. Slots neither touch nor are empty. Aborts when last < first; throws a
  /// traced std::runtime_error when a day is special.
  TimeBlock between(boost::gregorian::date const& first, boost::gregorian::date const& last) const;

 private:
  struct Window {
    boost::posix_time::time_duration from;
    boost::posix_time::time_duration to;
    Weekdays days;
  };
  using Windows = std::vector<Window>;

  static void add(Window const& window, Windows& windows);
  static TimeBlock repeated(Windows const& windows, std::set<boost::gregorian::date> const& skipped,
                            boost::gregorian::date const& first,
                            boost::gregorian::date const& last);

  Windows shifts_;
  Windows breaks_;
  std::set<boost::gregorian::date> holidays_;
};

}  // namespace libvarrow
