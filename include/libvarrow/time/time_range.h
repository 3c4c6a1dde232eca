// Predicates on intervals and daily windows, and the text forms of dates, times and durations.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Returns whether [s2, e2] lies inside [s1, e1], both ends included: [8, 10] contains [8, 10].
/// Aborts when e1 < s1 or e2 < s2.
LIBVARROW_API bool isContain(boost::posix_time::ptime const& s1, boost::posix_time::ptime const& e1,
                             boost::posix_time::ptime const& s2,
                             boost::posix_time::ptime const& e2);

/// Returns whether two intervals share time. Intervals that only touch do not, [8, 10] and
/// [10, 12], nor does an empty interval at an end of the other. Aborts when e1 < s1 or e2 < s2.
LIBVARROW_API bool isOverlap(boost::posix_time::ptime s1, boost::posix_time::ptime e1,
                             boost::posix_time::ptime s2, boost::posix_time::ptime e2);

/// Returns whether the time of day of `t` lies in the daily window [begin, end], both ends
/// included. An `end` past 24 h lies on the next day: 22 h to 30 h contains 23:00 and 06:00, not
/// 07:00. Aborts with a back-trace unless begin < end, begin < 24 h and end - begin < 24 h.
LIBVARROW_API bool isInRange(boost::posix_time::time_duration begin,
                             boost::posix_time::time_duration end, boost::posix_time::ptime t);

/// Returns whether the interval [s, e] meets the daily window [begin, end] (as for isInRange).
/// Touching counts, unlike in the isOverlap of two intervals: 10:00 to 11:00 meets the window 8 h
/// to 10 h. Aborts with a back-trace when the window is invalid as above or s >= e.
LIBVARROW_API bool isOverlap(boost::posix_time::time_duration begin,
                             boost::posix_time::time_duration end, boost::posix_time::ptime s,
                             boost::posix_time::ptime e);

/// Returns "2024-03-05".
///
/// All text forms drop fractions of a second and do not wrap the hours of a duration at 24. Every
/// part of a negative duration is negative. A special value gives its name, "not-a-date-time",
/// "+infinity" or "-infinity".
LIBVARROW_API std::string time2str(boost::gregorian::date const& value);
/// Returns "2024-03-05 07:08:09".
LIBVARROW_API std::string time2str(boost::posix_time::ptime const& value);
/// Returns "26:05:03".
LIBVARROW_API std::string time2str(boost::posix_time::time_duration const& value);
///@{
/// Returns the text of `*value`; `value` is not null.
LIBVARROW_API std::string time2str(boost::gregorian::date const* value);
LIBVARROW_API std::string time2str(boost::posix_time::ptime const* value);
LIBVARROW_API std::string time2str(boost::posix_time::time_duration const* value);
///@}

/// Returns "2024-03-05".
LIBVARROW_API std::string time2strIgnoreSecond(boost::gregorian::date const& value);
/// Returns "2024-03-05 07:08".
LIBVARROW_API std::string time2strIgnoreSecond(boost::posix_time::ptime const& value);
/// Returns "26:05".
LIBVARROW_API std::string time2strIgnoreSecond(boost::posix_time::time_duration const& value);
///@{
/// Returns the text of `*value`; `value` is not null.
LIBVARROW_API std::string time2strIgnoreSecond(boost::gregorian::date const* value);
LIBVARROW_API std::string time2strIgnoreSecond(boost::posix_time::ptime const* value);
LIBVARROW_API std::string time2strIgnoreSecond(boost::posix_time::time_duration const* value);
///@}

/// Returns "2024-03-05 07:08".
LIBVARROW_API std::string time2strNew(boost::posix_time::ptime const& value);
/// Returns the parts that are positive, "01小时30秒"; empty when none is.
LIBVARROW_API std::string time2strNew(boost::posix_time::time_duration const& value);
///@{
/// Returns the text of `*value`; `value` is not null.
LIBVARROW_API std::string time2strNew(boost::posix_time::ptime const* value);
LIBVARROW_API std::string time2strNew(boost::posix_time::time_duration const* value);
///@}

}  // namespace libvarrow
