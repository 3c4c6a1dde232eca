// Digits of dates, times and durations, without facets, printf or allocation.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstdint>
#include <string_view>

namespace libvarrow::base::time_digits {

/// The length that suffices for every text written below.
constexpr int kMaxLength = 100;

/// Hours (not wrapped), minutes of the hour and seconds of the minute, truncated toward zero. All
/// have the duration's sign.
struct ClockParts {
  std::int64_t hours;
  int minutes;
  int seconds;
};
ClockParts clockParts(const boost::posix_time::time_duration& duration);

// Each function writes at `to` and returns the end of its text. The value must not be special.

/// Writes at least two characters, as "%02d".
char* writeTwoDigits(char* to, std::int64_t number);
/// Writes "2024-03-05".
char* writeDate(char* to, const boost::gregorian::date& date);
/// Writes "07:08".
char* writeHoursMinutes(char* to, const ClockParts& parts);
/// Writes "07:08:09".
char* writeClock(char* to, const ClockParts& parts);
/// Writes "2024-03-05 07:08:09".
char* writeTime(char* to, const boost::posix_time::ptime& time);

///@{
/// Reads "YYYY-MM-DD", "YYYY-MM-DD HH:MM:SS" or "HH:MM:SS": 10, 19 or 8 characters with every
/// number in its range. A duration has up to 99 hours. Returns false for any other text.
bool readDate(std::string_view text, boost::gregorian::date& date);
bool readTime(std::string_view text, boost::posix_time::ptime& time);
bool readDuration(std::string_view text, boost::posix_time::time_duration& duration);
///@}

}  // namespace libvarrow::base::time_digits
