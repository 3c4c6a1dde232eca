#include "libvarrow/time/time_range.h"

#include <algorithm>

#include "backtrace/stop.h"
#include "base/NeverDestroyed.h"
#include "base/time_digits.h"
#include "base/time_text.h"
#include "cppbind/Assert.h"
#include "libvarrow/utility/UTFConverter.h"
#include "time/interval_rules.h"

namespace libvarrow {

using base::time_digits::ClockParts;
using base::time_digits::clockParts;
using boost::gregorian::date;
using boost::posix_time::hours;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

namespace {

time_duration oneDay() {
  return hours(24);
}

void requireWindow(time_duration begin, time_duration end) {
  // Does not compute end - begin, because it may overflow.
  if (begin < end && begin < oneDay() && end < begin + oneDay()) return;
  stop("daily window from " + time2str(begin) + " to " + time2str(end) +
       ": must begin before 24:00 and end after its begin, less than 24 hours later");
}

void requireInterval(ptime begin, ptime end) {
  if (begin < end) return;
  stop("interval from " + time2str(begin) + " to " + time2str(end) +
       ": should end after it begins");
}

template <class T>
std::string text(const T& value, char* (*write)(char*, const T&)) {
  char buffer[base::time_digits::kMaxLength];
  return std::string(buffer, write(buffer, value));
}

char* appendUnit(char* to, std::int64_t number, const std::string& unit) {
  if (number <= 0) return to;
  return std::copy(unit.begin(), unit.end(), base::time_digits::writeTwoDigits(to, number));
}

char* writeTimeOfMinute(char* to, const ptime& value) {
  if (value.is_special()) return base::time_text::write(to, value);
  to = base::time_digits::writeDate(to, value.date());
  *to++ = ' ';
  return base::time_digits::writeHoursMinutes(to, clockParts(value.time_of_day()));
}

char* writeDurationOfMinute(char* to, const time_duration& value) {
  if (value.is_special()) return base::time_text::write(to, value);
  return base::time_digits::writeHoursMinutes(to, clockParts(value));
}

// The words in the program's narrow encoding.
struct Units {
  std::string hours = utility::fromUtf8("小时");
  std::string minutes = utility::fromUtf8("分钟");
  std::string seconds = utility::fromUtf8("秒");
};

const Units& units() {
  static base::NeverDestroyed<const Units> units;
  return *units;
}

char* writeDurationInWords(char* to, const time_duration& value) {
  if (value.is_special()) return base::time_text::write(to, value);
  const ClockParts parts = clockParts(value);
  to = appendUnit(to, parts.hours, units().hours);
  to = appendUnit(to, parts.minutes, units().minutes);
  return appendUnit(to, parts.seconds, units().seconds);
}

}  // namespace

bool isContain(ptime const& s1, ptime const& e1, ptime const& s2, ptime const& e2) {
  CPPBIND_ASSERT(s1 <= e1);
  CPPBIND_ASSERT(s2 <= e2);
  return interval_rules::contains(s1, e1, s2, e2);
}

bool isOverlap(ptime s1, ptime e1, ptime s2, ptime e2) {
  CPPBIND_ASSERT(s1 <= e1);
  CPPBIND_ASSERT(s2 <= e2);
  return interval_rules::overlap(s1, e1, s2, e2);
}

bool isInRange(time_duration begin, time_duration end, ptime t) {
  requireWindow(begin, end);
  const time_duration timeOfDay = t.time_of_day();
  if (begin <= timeOfDay && timeOfDay <= std::min(end, oneDay())) return true;
  return end > oneDay() && time_duration() <= timeOfDay && timeOfDay <= end - oneDay();
}

bool isOverlap(time_duration begin, time_duration end, ptime s, ptime e) {
  requireWindow(begin, end);
  requireInterval(s, e);
  const time_duration from = s.time_of_day();
  const time_duration to = from + (e - s);
  // Closed, unlike the isOverlap of two intervals: a shift that begins when the window ends still
  // meets it.
  const bool meetsWindow = begin <= to && from <= end;
  const bool meetsWindowPastMidnight = from + oneDay() <= end && begin <= to + oneDay();
  const bool meetsWindowOfNextDay = from <= end + oneDay() && begin + oneDay() <= to;
  return meetsWindow || meetsWindowPastMidnight || meetsWindowOfNextDay;
}

std::string time2str(date const& value) {
  return text<date>(value, base::time_text::write);
}
std::string time2str(ptime const& value) {
  return text<ptime>(value, base::time_text::write);
}
std::string time2str(time_duration const& value) {
  return text<time_duration>(value, base::time_text::write);
}
std::string time2str(date const* value) {
  return time2str(*value);
}
std::string time2str(ptime const* value) {
  return time2str(*value);
}
std::string time2str(time_duration const* value) {
  return time2str(*value);
}

std::string time2strIgnoreSecond(date const& value) {
  return time2str(value);
}
std::string time2strIgnoreSecond(ptime const& value) {
  return text(value, writeTimeOfMinute);
}
std::string time2strIgnoreSecond(time_duration const& value) {
  return text(value, writeDurationOfMinute);
}
std::string time2strIgnoreSecond(date const* value) {
  return time2strIgnoreSecond(*value);
}
std::string time2strIgnoreSecond(ptime const* value) {
  return time2strIgnoreSecond(*value);
}
std::string time2strIgnoreSecond(time_duration const* value) {
  return time2strIgnoreSecond(*value);
}

std::string time2strNew(ptime const& value) {
  return time2strIgnoreSecond(value);
}
std::string time2strNew(time_duration const& value) {
  return text(value, writeDurationInWords);
}
std::string time2strNew(ptime const* value) {
  return time2strNew(*value);
}
std::string time2strNew(time_duration const* value) {
  return time2strNew(*value);
}

}  // namespace libvarrow
