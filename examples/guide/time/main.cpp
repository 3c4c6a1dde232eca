// A week of two shifts, and the questions of a planner about it.
#include <cppbind/imp/binder.h>
#include <libvarrow/stream/StringIndent.h>
#include <libvarrow/time/TimeBlock.h>
#include <libvarrow/time/TimeSlotWithEfficiency.h>
#include <libvarrow/time/Timeline.h>
#include <libvarrow/time/WeeklyPattern.h>
#include <libvarrow/time/overflow_checker.h>
#include <libvarrow/time/time_range.h>

#include <boost/make_shared.hpp>
#include <iostream>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

using boost::gregorian::date;
using boost::gregorian::days;
using boost::posix_time::hours;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using libvarrow::time2str;
using libvarrow::TimeBlock;

date monday() {
  return date(2024, 3, 4);
}

ptime at(int day, int hour) {
  return ptime(monday() + days(day - 1), hours(hour));
}

// [calendar]
TimeBlock shiftsOfTheWeek() {
  TimeBlock week;
  for (int day = 1; day <= 5; ++day) {
    week.addTimeBlock(at(day, 6), at(day, 14));
    week.addTimeBlock(at(day, 14), at(day, 22));  // touches: one slot, 6:00 to 22:00
  }
  TimeBlock repairs;
  repairs.addTimeBlock(at(2, 10), at(2, 12));
  repairs.addTimeBlock(at(4, 20), at(5, 8));
  week.removeTimeBlock(repairs);
  return week;
}
// [/calendar]

// [pattern]
TimeBlock shiftsOfMay() {
  using libvarrow::Weekdays;
  libvarrow::WeeklyPattern pattern;
  pattern.addShift(hours(6), hours(14), Weekdays::mondayToFriday());
  pattern.addShift(hours(22), hours(30), {boost::gregorian::Friday});  // to Saturday 6:00
  pattern.addBreak(hours(10), hours(11));                              // on every day
  pattern.addHoliday(date(2024, 5, 1));                                // a Wednesday
  return pattern.between(date(2024, 5, 1), date(2024, 5, 31));
}
// [/pattern]

void showPattern() {
  // [may]
  const TimeBlock may = shiftsOfMay();
  std::cout << time2str(may.getTotalDur()) << " in May, at first\n"
            << may.intersection(at(60, 0), at(63, 0)) << '\n';
  // [/may]
}

void showCalendar(const TimeBlock& week) {
  std::cout << week << '\n';
  // [ask]
  std::cout << "work in all:  " << time2str(week.getTotalDur()) << '\n'
            << "on Tuesday:   "
            << time2str(week.getTotalDur(monday() + days(1), monday() + days(1))) << '\n'
            << "Tuesday 9-13: " << time2str(week.getTotalDur(at(2, 9), at(2, 13))) << '\n'
            << "free 9 to 11: " << week.haveBlock(at(2, 9), at(2, 11)) << '\n'
            << "any of it:    " << week.hasIntersection(at(2, 9), at(2, 11)) << '\n';
  // [/ask]
}

// Returns the time as text, or "never" when there is none.
std::string textOf(const std::optional<ptime>& time) {
  return time ? time2str(*time) : "never";
}

void showTwo(const TimeBlock& week) {
  // [two]
  TimeBlock worker(at(1, 8), at(1, 16));
  worker.addTimeBlock(at(2, 8), at(2, 16));
  std::cout << "machine and worker:\n"
            << week.intersection(worker) << '\n'
            << "free of work on Tuesday:\n"
            << week.gaps(at(2, 0), at(3, 0)) << '\n';
  // [/two]
}

void showSearch(const TimeBlock& week) {
  // [search]
  std::cout << "4 h from Tuesday 8:00 end    " << textOf(week.workEnd(at(2, 8), hours(4))) << '\n'
            << "4 h that end Tuesday 14:00   " << textOf(week.workStart(at(2, 14), hours(4)))
            << '\n'
            << "the last 2 h of the week     " << textOf(week.workEnd(at(5, 20), hours(2))) << '\n'
            << "3 h there do not fit         " << textOf(week.workEnd(at(5, 20), hours(3))) << '\n'
            << "from Tuesday 10:00, work at  " << textOf(week.nextWorking(at(2, 10))) << '\n'
            << "before Tuesday 12:00, until  " << textOf(week.lastWorking(at(2, 12))) << '\n';
  // [/search]
  // [used]
  // A slot after the horizon: a search that ends in the last slot finds nothing.
  TimeBlock calendar = week;
  calendar.addTimeBlock(week.endTime() + hours(24), week.endTime() + hours(25));
  std::cout << calendar.getBlockAtPos4Dur(at(2, 8), hours(4)) << '\n';
  // [/used]
}

void showBookings(const TimeBlock& week) {
  // [timeline]
  libvarrow::Timeline free(week);
  for (const int work : {20, 5, 30, 20}) {
    const auto end = free.workEnd(at(1, 6), hours(work));
    std::cout << work << " h " << (end ? "until " + time2str(*end) : "do not fit") << '\n';
    if (end) free.removeTimeBlock(at(1, 6), *end);
  }
  std::cout << "left:\n" << free.toTimeBlock() << '\n';
  // [/timeline]
}

void showDays(const TimeBlock& week) {
  // [days]
  for (const auto& [day, work] : week.getStatisticByDay()) {
    std::cout << time2str(day) << ' ' << time2str(work) << '\n';
  }
  // [/days]
}

void showShortSlots(const TimeBlock& week) {
  // [walk]
  for (const libvarrow::TimeSlot& slot : week) {
    if (slot.dur() >= hours(14)) continue;
    std::cout << "only " << time2str(slot.dur()) << " from " << time2str(slot.time_begin) << " to "
              << time2str(slot.time_end) << '\n';
  }
  // [/walk]
}

void showCapacity() {
  // [capacity]
  const auto early = boost::make_shared<std::string>("early");
  const ::utility::TimeSlotWithEfficiency slot(at(1, 8), at(1, 10), /*blockCount=*/1, /*rest=*/true,
                                               /*efficiency=*/0.8, early, hours(2), nullptr);
  time_duration work = hours(2);
  const ptime end = slot.getEndTimeWithEfficiency(at(1, 8), work);  // work: the remaining part
  std::cout << slot.dumpAsString() << '\n'
            << "until " << time2str(end) << ", left " << time2str(work) << '\n';
  // [/capacity]
}

void showWindows() {
  // [windows]
  const std::set<date> nights = {monday(), monday() + days(1), monday() + days(2),
                                 monday() + days(3)};
  libvarrow::OverflowRange<date> range;
  const auto excess = libvarrow::overflowsChecker(nights, days(7), /*limit=*/3, &range);
  std::cout << excess << " night too many from " << time2str(range.begin) << " to "
            << time2str(range.end) << '\n';
  std::cout << "at 23:00, in the night shift: "
            << libvarrow::isInRange(hours(22), hours(30), at(1, 23)) << '\n';
  // [/windows]
}

// [json]
struct Machine {
  TimeBlock calendar;

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    TimeBlock read = calendar;
    binder->bind("calendar", read);
    // Slots from a file are taken unchanged. Adding them one by one merges them, and throws for a
    // reversed one.
    calendar = TimeBlock();
    cppbind::withKey("calendar", [&] { calendar.addTimeBlocks(read); });  // adds the path
  }
};
// [/json]

void showJson() {
  Machine machine;
  try {
    cppbind::JsonDecodeBinder().decode(cppbind::readJsonFile("machine.json"), machine);
    std::cout << machine.calendar.dumpAsString() << '\n';
  } catch (const cppbind::ParseErrorException& error) {
    std::cerr << error.what() << '\n';
  }
}

}  // namespace

int main() {
  const TimeBlock week = shiftsOfTheWeek();
  std::cout << std::boolalpha;
  showCalendar(week);
  showPattern();
  showTwo(week);
  showSearch(week);
  showBookings(week);
  showDays(week);
  showShortSlots(week);
  showCapacity();
  showWindows();
  showJson();
}
