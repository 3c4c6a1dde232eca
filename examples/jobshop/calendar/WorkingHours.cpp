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

void requireEfficiency(const std::optional<double>& efficiency) {
  if (!efficiency || Efficiency::isValid(*efficiency)) return;
  throw ParseErrorException("efficiency", "expected a number from 0.001 to 1000");
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
  binder->bind("shifts", shifts);
  binder->bind("breaks", breaks);
  binder->bind("closed", closed, TimeBlock());
  binder->bind("efficiency", efficiency);
  requireWindows(closed);
  requireEfficiency(efficiency);
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
