#include "libvarrow/time/WeeklyPattern.h"

#include <algorithm>
#include <utility>

#include "libvarrow/backtrace/Check.h"
#include "libvarrow/backtrace/TracedError.h"
#include "libvarrow/time/time_range.h"
#include "time/saturating_time.h"

namespace libvarrow {

using boost::gregorian::date;
using boost::posix_time::hours;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

namespace {

constexpr boost::gregorian::days kOneDay(1);

// Returns `day` 24:00, or the last time that exists.
ptime endOf(const date& day) {
  return std::min(shifted(ptime(day), hours(24)), ptime(boost::date_time::max_date_time));
}

}  // namespace

void WeeklyPattern::addShift(time_duration const& from, time_duration const& to, Weekdays days) {
  add({from, to, days}, shifts_);
}

void WeeklyPattern::addBreak(time_duration const& from, time_duration const& to, Weekdays days) {
  add({from, to, days}, breaks_);
}

void WeeklyPattern::add(Window const& window, Windows& windows) {
  const auto& [from, to, days] = window;
  const bool isTimeOfDay = !(from < hours(0)) && from < hours(24);
  if (!isTimeOfDay || !(from < to) || !(to <= from + hours(24))) {
    throwTraced("weekly window from " + time2str(from) + " to " + time2str(to) +
                ": must begin from 0:00 to 24:00 and end after its begin, at most 24 hours later");
  }
  windows.push_back(window);
}

void WeeklyPattern::addHoliday(date const& day) {
  holidays_.insert(day);
}

TimeBlock WeeklyPattern::between(date const& first, date const& last) const {
  LIBVARROW_CHECK(first <= last);
  requireCountable(first, last);
  // Windows of the day before may extend into the first day.
  const date begin = first == date(boost::date_time::min_date_time) ? first : first - kOneDay;
  TimeBlock block = repeated(shifts_, holidays_, begin, last);
  block.removeTimeBlock(repeated(breaks_, {}, begin, last));
  return block.intersection(ptime(first), endOf(last));
}

TimeBlock WeeklyPattern::repeated(Windows const& windows, std::set<date> const& skipped,
                                  date const& first, date const& last) {
  std::vector<TimeSlot> slots;
  for (date day = first; day <= last; day += kOneDay) {
    if (skipped.count(day) > 0) continue;
    const auto weekday = day.day_of_week().as_enum();
    for (const auto& [from, to, days] : windows) {
      if (days.contains(weekday)) slots.emplace_back(ptime(day, from), shifted(ptime(day), to));
    }
  }
  TimeBlock block;
  block.addTimeBlocks(TimeBlock(std::move(slots)));
  return block;
}

}  // namespace libvarrow
