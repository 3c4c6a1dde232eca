// Dates, times and durations in the form of time2str, special values too, written into a buffer.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>

#include "base/time_digits.h"

namespace libvarrow::base::time_text {

/// The length that suffices for every text written below.
constexpr int kMaxLength = time_digits::kMaxLength;

// Each function writes at `to` and returns the end of its text.
char* write(char* to, const boost::gregorian::date& value);
char* write(char* to, const boost::posix_time::ptime& value);
char* write(char* to, const boost::posix_time::time_duration& value);

}  // namespace libvarrow::base::time_text
