// Steps in time that are settled where the date-time library leaves them open.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include "libvarrow/backtrace/TracedError.h"
#include "libvarrow/time/time_range.h"

namespace libvarrow {

/// time + duration. A sum before or behind all real times is -infinity or +infinity: a count of
/// microseconds would overflow. Special values follow the date-time library's rules.
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

/// total + duration. A sum beyond the longest durations is infinite; overlapping slots may come to
/// that.
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

/// Throws a traced runtime error with the texts of both times when they are reversed.
inline void requireForwards(const boost::posix_time::ptime& begin,
                            const boost::posix_time::ptime& end) {
  // No separator between the two: whoever reads these messages by program knows them so.
  if (end < begin) throwTraced(time2str(begin) + time2str(end));
}

}  // namespace libvarrow
