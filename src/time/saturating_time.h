// Arithmetic on times and durations that saturates instead of overflowing, and the errors of
// intervals.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>

#include "libvarrow/backtrace/TracedError.h"
#include "libvarrow/time/time_range.h"

namespace libvarrow {

/// Returns time + duration, or -infinity or +infinity when the sum is before or after all real
/// times, as a count of microseconds would overflow. Special values follow the
/// rules of the date-time library.
inline boost::posix_time::ptime shifted(const boost::posix_time::ptime& time,
                                        const boost::posix_time::time_duration& duration) {
  using boost::posix_time::ptime;
  if (time.is_special() || duration.is_special()) return time + duration;
  static const ptime earliest(boost::date_time::min_date_time);
  static const ptime latest(boost::date_time::max_date_time);
  if (latest - time < duration) return boost::date_time::pos_infin;
  if (duration < earliest - time) return boost::date_time::neg_infin;
  return time + duration;
}

/// Returns total + duration, or an infinity when the sum is beyond the longest durations, which
/// overlapping slots may reach.
inline boost::posix_time::time_duration sumOf(const boost::posix_time::time_duration& total,
                                              const boost::posix_time::time_duration& duration) {
  using boost::posix_time::time_duration;
  if (total.is_special() || duration.is_special()) return total + duration;
  const time_duration longest(boost::date_time::max_date_time);
  if (duration.is_negative()) {
    return total < -longest - duration ? time_duration(boost::date_time::neg_infin)
                                       : total + duration;
  }
  return longest - duration < total ? time_duration(boost::date_time::pos_infin) : total + duration;
}

/// Throws a traced runtime error with the texts of both times when end < begin.
inline void requireForwards(const boost::posix_time::ptime& begin,
                            const boost::posix_time::ptime& end) {
  // Writes no separator: programs that parse these messages know them in this form.
  if (end < begin) throwTraced(time2str(begin) + time2str(end));
}

/// Throws a traced runtime error unless the days from `first` to `last` can be listed.
inline void requireCountable(const boost::gregorian::date& first,
                             const boost::gregorian::date& last) {
  if (first.is_special() || last.is_special()) {
    throwTraced("the days from " + time2str(first) + " to " + time2str(last) + " cannot be listed");
  }
}

}  // namespace libvarrow
