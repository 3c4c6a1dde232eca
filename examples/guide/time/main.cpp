// A week of two shifts, and the questions of a planner about it.
#include <cppbind/imp/binder.h>
#include <libvarrow/stream/StringIndent.h>
#include <libvarrow/time/TimeBlock.h>
#include <libvarrow/time/TimeSlotWithEfficiency.h>
#include <libvarrow/time/overflow_checker.h>
#include <libvarrow/time/time_range.h>

#include <boost/make_shared.hpp>
#include <iostream>
#include <set>
#include <string>
#include <vector>

namespace {

using boost::gregorian::date;
using boost::gregorian::days;
using boost::posix_time::hours;
using boost::posix_time::ptime;
using boost::posix_time::seconds;
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

void showCalendar(const TimeBlock& week) {
  std::cout << week.dumpAsString() << '\n';
  // [ask]
  std::cout << "work in all:  " << time2str(week.getTotalDur()) << '\n'
            << "on Tuesday:   "
            << time2str(week.getTotalDur(monday() + days(1), monday() + days(1))) << '\n'
            << "Tuesday 9-13: " << time2str(week.getTotalDur(at(2, 9), at(2, 13))) << '\n'
            << "free 9 to 11: " << week.haveBlock(at(2, 9), at(2, 11)) << '\n'
            << "any of it:    " << week.hasIntersection(at(2, 9), at(2, 11)) << '\n';
  // [/ask]
}

// [search]
// Returns when interruptible work ends; not-a-date-time when the calendar ends before.
ptime endOfWork(TimeBlock week, const ptime& start, const time_duration& work) {
  if (week.empty()) return ptime();
  // Work that ends in the last slot counts as not found, so add a slot after the horizon.
  const ptime horizon = week.endTime();
  week.addTimeBlock(horizon + hours(24), horizon + hours(25));
  const TimeBlock used = week.getBlockAtPos4Dur(start, work);
  return used.empty() || used.endTime() > horizon ? ptime() : used.endTime();
}

// Returns when work must begin in order to end at `end`.
ptime beginOfWork(const TimeBlock& week, const ptime& end, const time_duration& work) {
  if (week.empty() || end <= week.beginTime()) return ptime();
  // The search ignores a slot that contains `end` or ends there: cut the calendar there and search
  // from a little later.
  const TimeBlock before = week.intersection(week.beginTime(), end);
  const TimeBlock used = before.getBlockAtPos4DurByEnd(end + seconds(1), work);
  return used.empty() ? ptime() : used.beginTime();
}
// [/search]

void showSearch(const TimeBlock& week) {
  std::cout << "4 h from Tuesday 8:00 end      " << time2str(endOfWork(week, at(2, 8), hours(4)))
            << '\n'
            << "4 h that end Tuesday 14:00     " << time2str(beginOfWork(week, at(2, 14), hours(4)))
            << '\n'
            << "the last 2 h, in the last slot " << time2str(endOfWork(week, at(5, 20), hours(2)))
            << '\n'
            << "3 h there do not fit           " << time2str(endOfWork(week, at(5, 20), hours(3)))
            << '\n'
            << "without the slot after it      "
            << week.getBlockAtPos4Dur(at(5, 20), hours(2)).getBlocks().size() << " slots\n";
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
  for (const libvarrow::TimeSlot& slot : week.getBlocks()) {
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
  showSearch(week);
  showDays(week);
  showShortSlots(week);
  showCapacity();
  showWindows();
  showJson();
}
