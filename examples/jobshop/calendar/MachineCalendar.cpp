#include "calendar/MachineCalendar.h"

#include <algorithm>

namespace jobshop {

using boost::posix_time::ptime;
using libvarrow::TimeBlock;
using libvarrow::TimeSlot;

MachineCalendar::MachineCalendar(const WorkingHours& hours, const ShopClock& clock,
                                 const ptime& end)
    : efficiency_(hours.efficiency.value_or(1)), clock_(clock), alwaysWorks_(hours.isAlways()) {
  if (alwaysWorks_) return;
  end_ = clock.unitsUntil(end);
  const TimeBlock working = hours.workingTime(clock.pointAt(0), clock.pointAt(end_));
  for (const TimeSlot& slot : working.getBlocks()) addWhole(slot);
}

void MachineCalendar::addWhole(const TimeSlot& slot) {
  const ptime end = clock_.pointAt(clock_.unitsUntil(slot.time_end));
  ptime begin = clock_.pointAt(clock_.unitsUntil(slot.time_begin));
  if (begin < slot.time_begin) begin += clock_.unit();
  if (begin < end) working_.addTimeBlock(begin, end);
}

Span MachineCalendar::toSpan(const TimeSlot& slot) const {
  return {clock_.unitsUntil(slot.time_begin), clock_.unitsUntil(slot.time_end)};
}

std::optional<Span> MachineCalendar::run(Time from, Time time) const {
  if (alwaysWorks_) return Span{from, from + time};
  if (from > end_ || time > end_) return std::nullopt;
  const ptime at = clock_.pointAt(from);
  if (time == 0) {
    const auto& slots = working_.getBlocks();
    const auto slot = TimeBlock::lowerBound(slots, at);
    if (slot == slots.end()) return std::nullopt;
    const Time start = std::max(from, toSpan(*slot).start);
    return Span{start, start};
  }
  const auto start = working_.nextWorking(at);
  const auto end = working_.workEnd(at, clock_.pointAt(time) - clock_.pointAt(0));
  if (!start || !end) return std::nullopt;
  return toSpan({*start, *end});
}

std::vector<Span> MachineCalendar::workingSpans(Time begin, Time end) const {
  if (begin >= end) return {};
  if (alwaysWorks_) return {{begin, end}};
  std::vector<Span> spans;
  if (begin >= end_) return spans;
  const TimeBlock inside =
      working_.intersection(clock_.pointAt(begin), clock_.pointAt(std::min(end, end_)));
  for (const TimeSlot& slot : inside.getBlocks()) spans.push_back(toSpan(slot));
  return spans;
}

Time MachineCalendar::workingTime(Time begin, Time end) const {
  Time time = 0;
  for (const Span& span : workingSpans(begin, end)) time += span.end - span.start;
  return time;
}

std::vector<Span> MachineCalendar::gaps(Time begin, Time end) const {
  std::vector<Span> gaps;
  Time from = begin;
  for (const Span& span : workingSpans(begin, end)) {
    if (from < span.start) gaps.push_back({from, span.start});
    from = span.end;
  }
  if (from < end) gaps.push_back({from, end});
  return gaps;
}

}  // namespace jobshop
