#include "calendar/WorkingHours.h"

#include <cppbind/imp/binder.h>
#include <libvarrow/time/time_range.h>

#include "calendar/Efficiency.h"

namespace jobshop {

namespace {

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

// Returns every window that may reach into [from, to], also of the day before, since windows may
// pass midnight.
TimeBlock repeated(const std::vector<DayWindow>& windows, const ptime& from, const ptime& to) {
  const boost::gregorian::days oneDay(1);
  TimeBlock block;
  for (auto day = from.date() - oneDay; day <= to.date(); day += oneDay) {
    for (const DayWindow& window : windows) {
      if (window.startsOn(day)) block.addTimeBlock({day, window.from}, {day, window.to});
    }
  }
  return block;
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
  WorkingHours hours = *this;
  if (!hours.shifts) hours.shifts = shop.shifts;
  if (!hours.breaks) hours.breaks = shop.breaks;
  if (!hours.efficiency) hours.efficiency = shop.efficiency;
  // Adds slots one by one to a new block, since a block from a file may overlap itself.
  hours.closed = TimeBlock();
  hours.closed.addTimeBlocks(closed);
  hours.closed.addTimeBlocks(shop.closed);
  return hours;
}

bool WorkingHours::isAlways() const {
  return isEmpty(shifts) && isEmpty(breaks) && closed.empty();
}

TimeBlock WorkingHours::workingTime(const ptime& from, const ptime& to) const {
  TimeBlock block(from, to);
  if (!isEmpty(shifts)) block = repeated(*shifts, from, to).intersection(from, to);
  if (!isEmpty(breaks)) block.removeTimeBlock(repeated(*breaks, from, to));
  block.removeTimeBlock(closed);
  return block;
}

}  // namespace jobshop
