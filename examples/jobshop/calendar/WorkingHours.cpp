#include "calendar/WorkingHours.h"

#include <cppbind/imp/binder.h>
#include <libvarrow/time/time_range.h>

#include "calendar/Efficiency.h"

namespace jobshop {

namespace {

using boost::posix_time::hours;
using boost::posix_time::ptime;
using cppbind::ParseErrorException;
using libvarrow::TimeBlock;
using libvarrow::TimeSlot;

void requireWindows(const TimeBlock& closed) {
  for (const TimeSlot& slot : closed.getBlocks()) {
    const bool isTime = !slot.time_begin.is_special() && !slot.time_end.is_special();
    if (isTime && slot.time_begin < slot.time_end) continue;
    throw ParseErrorException("closed", "expected \"timeEnd\" after \"timeBegin\", found " +
                                            libvarrow::time2str(slot.time_begin) + " to " +
                                            libvarrow::time2str(slot.time_end));
  }
}

bool isEmpty(const std::optional<std::vector<DayWindow>>& windows) {
  return !windows || windows->empty();
}

}  // namespace

void WorkingHours::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->field("shifts", shifts).about("Daily working hours; by default around the clock.");
  binder->field("breaks", breaks).about("Daily windows that are removed from the shifts.");
  binder->field("closed", closed, TimeBlock())
      .about("Intervals that are also removed from the shifts: holidays, maintenance.");
  binder->field("efficiency", efficiency)
      .between(Efficiency::kMin, Efficiency::kMax)
      .about("The work done in a unit of working time; by default 1.");
  requireWindows(closed);
}

WorkingHours WorkingHours::within(const WorkingHours& shop) const {
  WorkingHours merged = *this;
  if (!merged.shifts) merged.shifts = shop.shifts;
  if (!merged.breaks) merged.breaks = shop.breaks;
  if (!merged.efficiency) merged.efficiency = shop.efficiency;
  // Adds slots one by one to a new block, since a block from a file may overlap itself.
  merged.closed = TimeBlock();
  merged.closed.addTimeBlocks(closed);
  merged.closed.addTimeBlocks(shop.closed);
  return merged;
}

bool WorkingHours::isAlways() const {
  return isEmpty(shifts) && isEmpty(breaks) && closed.empty();
}

TimeBlock WorkingHours::workingTime(const ptime& from, const ptime& to) const {
  libvarrow::WeeklyPattern pattern;
  if (isEmpty(shifts)) {
    pattern.addShift(hours(0), hours(24));
  } else {
    for (const DayWindow& shift : *shifts) pattern.addShift(shift.from, shift.to, shift.weekdays());
  }
  if (breaks) {
    for (const DayWindow& pause : *breaks) pattern.addBreak(pause.from, pause.to, pause.weekdays());
  }
  TimeBlock block = pattern.between(from.date(), to.date()).intersection(from, to);
  block.removeTimeBlock(closed);
  return block;
}

}  // namespace jobshop
