// Predicates on intervals and daily windows, and the text forms of dates, times and durations.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Whether [s2, e2] lies inside [s1, e1], both ends included: [8, 10] contains [8, 10].
/// Asserts s1 <= e1 and s2 <= e2 (reversed intervals end the process).
LIBVARROW_API bool isContain(boost::posix_time::ptime const& s1, boost::posix_time::ptime const& e1,
                             boost::posix_time::ptime const& s2,
                             boost::posix_time::ptime const& e2);

/// Whether two intervals share time: open, [8, 10] and [10, 12] do not, and an empty interval meets
/// nothing at its own end points. Asserts s1 <= e1 and s2 <= e2.
LIBVARROW_API bool isOverlap(boost::posix_time::ptime s1, boost::posix_time::ptime e1,
                             boost::posix_time::ptime s2, boost::posix_time::ptime e2);

/// Whether the time of day of `t` lies in the daily window [begin, end], both ends included. `end`
/// past 24 h runs into the next day: 22 h to 30 h holds 23:00 and 06:00, not 07:00.
/// A window that is not begin < end, begin < 24 h, end - begin < 24 h ends the process with a
/// back-trace.
LIBVARROW_API bool isInRange(boost::posix_time::time_duration begin,
                             boost::posix_time::time_duration end, boost::posix_time::ptime t);

/// Whether the interval [s, e] meets the daily window [begin, end] (as for isInRange): closed,
/// unlike the isOverlap of two intervals, so 10:00 to 11:00 meets the window 8 h to 10 h.
/// A window as above, or one with s >= e, ends the process with a back-trace.
LIBVARROW_API bool isOverlap(boost::posix_time::time_duration begin,
                             boost::posix_time::time_duration end, boost::posix_time::ptime s,
                             boost::posix_time::ptime e);

/// "2024-03-05".
///
/// Of all text forms: fractions of a second are cut off; hours of a duration are not wrapped at 24;
/// of a negative duration every part is negative. A special value gives its name,
/// "not-a-date-time", "+infinity" or "-infinity".
LIBVARROW_API std::string time2str(boost::gregorian::date const& value);
/// "2024-03-05 07:08:09"
LIBVARROW_API std::string time2str(boost::posix_time::ptime const& value);
/// "26:05:03"
LIBVARROW_API std::string time2str(boost::posix_time::time_duration const& value);
///@{
/// The form of what `value` points to (not null).
LIBVARROW_API std::string time2str(boost::gregorian::date const* value);
LIBVARROW_API std::string time2str(boost::posix_time::ptime const* value);
LIBVARROW_API std::string time2str(boost::posix_time::time_duration const* value);
///@}

/// "2024-03-05"
LIBVARROW_API std::string time2strIgnoreSecond(boost::gregorian::date const& value);
/// "2024-03-05 07:08"
LIBVARROW_API std::string time2strIgnoreSecond(boost::posix_time::ptime const& value);
/// "26:05"
LIBVARROW_API std::string time2strIgnoreSecond(boost::posix_time::time_duration const& value);
///@{
/// The form of what `value` points to (not null).
LIBVARROW_API std::string time2strIgnoreSecond(boost::gregorian::date const* value);
LIBVARROW_API std::string time2strIgnoreSecond(boost::posix_time::ptime const* value);
LIBVARROW_API std::string time2strIgnoreSecond(boost::posix_time::time_duration const* value);
///@}

/// "2024-03-05 07:08"
LIBVARROW_API std::string time2strNew(boost::posix_time::ptime const& value);
/// "01小时30秒": only the parts that are positive; empty when none is.
LIBVARROW_API std::string time2strNew(boost::posix_time::time_duration const& value);
///@{
/// The form of what `value` points to (not null).
LIBVARROW_API std::string time2strNew(boost::posix_time::ptime const* value);
LIBVARROW_API std::string time2strNew(boost::posix_time::time_duration const* value);
///@}

}  // namespace libvarrow
