#include "TimeDigits.h"

#include <charconv>

namespace cppbind::time_digits {

namespace {

using boost::gregorian::date;
using boost::gregorian::gregorian_calendar;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

constexpr int kNoNumber = -1;

// The number that `length` digits at `at` write, or kNoNumber.
int readDigits(std::string_view text, std::size_t at, std::size_t length) {
  int number = 0;
  for (std::size_t i = at; i < at + length; ++i) {
    const unsigned digit = static_cast<unsigned char>(text[i]) - static_cast<unsigned>('0');
    if (digit > 9) return kNoNumber;
    number = number * 10 + static_cast<int>(digit);
  }
  return number;
}

}  // namespace

ClockParts clockParts(const time_duration& duration) {
  const std::int64_t totalSeconds = duration.ticks() / time_duration::ticks_per_second();
  return {totalSeconds / 3600, static_cast<int>(totalSeconds / 60 % 60),
          static_cast<int>(totalSeconds % 60)};
}

char* writeTwoDigits(char* to, std::int64_t number) {
  if (number >= 0 && number < 100) {
    *to++ = static_cast<char>('0' + number / 10);
    *to++ = static_cast<char>('0' + number % 10);
    return to;
  }
  return std::to_chars(to, to + 20, number).ptr;
}

char* writeDate(char* to, const date& day) {
  const date::ymd_type ymd = day.year_month_day();
  const int year = ymd.year;
  to = writeTwoDigits(to, year / 100);
  to = writeTwoDigits(to, year % 100);
  *to++ = '-';
  to = writeTwoDigits(to, ymd.month.as_number());
  *to++ = '-';
  return writeTwoDigits(to, ymd.day.as_number());
}

char* writeHoursMinutes(char* to, const ClockParts& parts) {
  to = writeTwoDigits(to, parts.hours);
  *to++ = ':';
  return writeTwoDigits(to, parts.minutes);
}

char* writeClock(char* to, const ClockParts& parts) {
  to = writeHoursMinutes(to, parts);
  *to++ = ':';
  return writeTwoDigits(to, parts.seconds);
}

char* writeTime(char* to, const ptime& time) {
  to = writeDate(to, time.date());
  *to++ = ' ';
  return writeClock(to, clockParts(time.time_of_day()));
}

bool readDate(std::string_view text, date& day) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return false;
  const int year = readDigits(text, 0, 4);
  const int month = readDigits(text, 5, 2);
  const int dayOfMonth = readDigits(text, 8, 2);
  if (year < 1400 || month < 1 || month > 12 || dayOfMonth < 1) return false;
  const auto y = static_cast<unsigned short>(year);
  const auto m = static_cast<unsigned short>(month);
  if (dayOfMonth > gregorian_calendar::end_of_month_day(y, m)) return false;
  day = date(y, m, static_cast<unsigned short>(dayOfMonth));
  return true;
}

bool readTime(std::string_view text, ptime& time) {
  if (text.size() != 19 || text[10] != ' ' || text[13] != ':' || text[16] != ':') return false;
  const int hour = readDigits(text, 11, 2);
  const int minute = readDigits(text, 14, 2);
  const int second = readDigits(text, 17, 2);
  if (hour == kNoNumber || hour > 23 || minute == kNoNumber || minute > 59 || second == kNoNumber ||
      second > 59) {
    return false;
  }
  date day;
  if (!readDate(text.substr(0, 10), day)) return false;
  time = ptime(day, time_duration(hour, minute, second));
  return true;
}

}  // namespace cppbind::time_digits
