#include "base/time_digits.h"

#include <charconv>
#include <cstring>

namespace libvarrow::base::time_digits {

namespace {

using boost::gregorian::date;
using boost::gregorian::gregorian_calendar;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

constexpr int kNoNumber = -1;
constexpr std::int64_t kSecondsOfDay = std::int64_t{24} * 60 * 60;

// Returns the number written by the `length` digits at `at`, or kNoNumber.
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

namespace {

// The digits of 0 to 99.
constexpr char kPairs[] =
    "0001020304050607080910111213141516171819202122232425262728293031323334353637383940414243444546"
    "4748495051525354555657585960616263646566676869707172737475767778798081828384858687888990919293"
    "949596979899";

// Precondition: `number` is below 100.
char* writePair(char* to, unsigned number) {
  std::memcpy(to, &kPairs[std::size_t{2} * number], 2);
  return to + 2;
}

char* writeDay(char* to, const date::ymd_type& day) {
  const unsigned year = static_cast<unsigned short>(day.year);
  to = writePair(to, year / 100);
  to = writePair(to, year % 100);
  *to++ = '-';
  to = writePair(to, day.month.as_number());
  *to++ = '-';
  return writePair(to, day.day.as_number());
}

}  // namespace

char* writeTwoDigits(char* to, std::int64_t number) {
  if (number >= 0 && number < 100) return writePair(to, static_cast<unsigned>(number));
  return std::to_chars(to, to + 20, number).ptr;
}

char* writeDate(char* to, const date& day) {
  return writeDay(to, day.year_month_day());
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

// Computes from the ticks: date() and year_month_day() would convert day numbers to calendar days
// and back several times. Throws as date() does when the time is outside the calendar.
char* writeTime(char* to, const ptime& time) {
  static const ptime firstTime(date{boost::date_time::min_date_time});
  constexpr date::date_int_type kFirstDay = 2232400;  // the day number of that date, 1400-01-01
  const std::int64_t ticks = (time - firstTime).ticks();
  if (ticks < 0) static_cast<void>(time.date());
  const std::int64_t seconds = ticks / time_duration::ticks_per_second();
  const auto days = static_cast<date::date_int_type>(seconds / kSecondsOfDay);
  const auto secondOfDay = static_cast<unsigned>(seconds % kSecondsOfDay);
  to = writeDay(to, gregorian_calendar::from_day_number(kFirstDay + days));
  *to++ = ' ';
  to = writePair(to, secondOfDay / 3600);
  *to++ = ':';
  to = writePair(to, secondOfDay / 60 % 60);
  *to++ = ':';
  return writePair(to, secondOfDay % 60);
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
  if (text.size() != 19 || text[10] != ' ') return false;
  date day;
  time_duration clock;
  if (!readDuration(text.substr(11), clock) || !readDate(text.substr(0, 10), day)) return false;
  if (clock.hours() > 23) return false;
  time = ptime(day, clock);
  return true;
}

bool readDuration(std::string_view text, time_duration& duration) {
  if (text.size() != 8 || text[2] != ':' || text[5] != ':') return false;
  const int hours = readDigits(text, 0, 2);
  const int minutes = readDigits(text, 3, 2);
  const int seconds = readDigits(text, 6, 2);
  if (hours == kNoNumber || minutes == kNoNumber || minutes > 59 || seconds == kNoNumber ||
      seconds > 59) {
    return false;
  }
  duration = time_duration(hours, minutes, seconds);
  return true;
}

}  // namespace libvarrow::base::time_digits
