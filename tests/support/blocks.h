// Blocks of time, in hours.
#pragma once

#include <boost/date_time/posix_time/posix_time.hpp>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "libvarrow/time/TimeBlock.h"

namespace test_support {

using boost::gregorian::date;
using boost::gregorian::days;
using boost::posix_time::hours;
using boost::posix_time::milliseconds;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

const date kFirstDay(2024, 3, 1);

/// Returns the time so many hours after kFirstDay 0:00.
inline ptime at(double hour) {
  return ptime(kFirstDay,
               boost::posix_time::microseconds(static_cast<std::int64_t>(hour * 3600e6)));
}

/// Returns a slot that may be reversed, unlike one that its constructor makes.
inline libvarrow::TimeSlot slotOf(ptime begin, ptime end) {
  libvarrow::TimeSlot slot;
  slot.time_begin = begin;
  slot.time_end = end;
  return slot;
}
inline libvarrow::TimeSlot slot(double begin, double end) {
  return slotOf(at(begin), at(end));
}

inline libvarrow::TimeBlock blockOf(std::initializer_list<libvarrow::TimeSlot> slots) {
  return libvarrow::TimeBlock(std::vector<libvarrow::TimeSlot>(slots));
}

/// Returns, as text, the answers of a TimeBlock or a Timeline to all questions that both know.
/// Precondition: from < to.
template <class Slots>
std::string answersOf(const Slots& slots, const ptime& from, const ptime& to) {
  std::ostringstream text;
  const auto add = [&](const auto& answer) { text << answer << '\n'; };
  const auto addTime = [&](const std::optional<ptime>& time) { add(time ? *time : ptime()); };
  for (const time_duration& work : {time_duration(), time_duration(5, 0, 0), (to - from) / 2}) {
    if (work.is_negative()) continue;
    addTime(slots.workEnd(from, work));
    addTime(slots.workStart(to, work));
    add(slots.haveBlock(from, to, work));
  }
  addTime(slots.nextWorking(from));
  addTime(slots.lastWorking(to));
  add(slots.haveBlock(from, to));
  add(slots.haveBlock(to, to));
  add(slots.hasIntersection(from, to));
  add(slots.hasIntersection(to, to));
  add(slots.intersection(from, to));
  add(slots.gaps(from, to));
  const bool isReal = !from.is_special() && !to.is_special();
  const ptime middle = isReal ? from + (to - from) / 2 : from;
  add(slots.intersection(blockOf({slotOf(middle, to), slotOf(from, middle)})));
  add(slots.getTotalDur());
  add(slots.getTotalDur(from, to));
  add(slots.size());
  if (!slots.empty()) add(libvarrow::TimeSlot(slots.beginTime(), slots.endTime()).dur());
  return text.str();
}

}  // namespace test_support
