// The reference model of a TimeBlock: the set of its hours.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <vector>

#include "libvarrow/time/time_range.h"
#include "support/blocks.h"

namespace test_support {

/// Answers the queries of a block whose slots are sorted, neither empty nor touching, and begin and
/// end on whole hours. Hour h lasts from at(h) to at(h + 1); day d has the hours from 24 d on.
class HourSet {
 public:
  HourSet() = default;
  explicit HourSet(const std::vector<libvarrow::TimeSlot>& slots) {
    for (const auto& [begin, end] : slots) insert(begin, end);
  }

  std::vector<libvarrow::TimeSlot> getBlocks() const {
    std::vector<libvarrow::TimeSlot> slots;
    for (const int hour : hours_) {
      if (!has(hour - 1)) slots.push_back(slot(hour, hour));
      slots.back().time_end = at(hour + 1);
    }
    return slots;
  }

  void addTimeBlock(ptime begin, ptime end) {
    using libvarrow::time2str;
    if (end < begin) throw std::runtime_error(time2str(begin) + time2str(end));
    insert(begin, end);
  }
  void removeTimeBlock(ptime begin, ptime end) {
    hours_.erase(hours_.lower_bound(hourOf(begin)), hours_.lower_bound(hourOf(end)));
  }
  HourSet intersection(ptime begin, ptime end) const {
    HourSet part;
    part.hours_ = {hours_.lower_bound(hourOf(begin)), hours_.lower_bound(hourOf(end))};
    return part;
  }
  HourSet intersection(const HourSet& other) const {
    HourSet common;
    std::set_intersection(hours_.begin(), hours_.end(), other.hours_.begin(), other.hours_.end(),
                          std::inserter(common.hours_, common.hours_.end()));
    return common;
  }
  HourSet gaps(ptime begin, ptime end) const {
    HourSet gaps;
    gaps.insert(begin, end);
    for (const int hour : hours_) gaps.hours_.erase(hour);
    return gaps;
  }

  bool hasIntersection(ptime begin, ptime end) const {
    return count(hourOf(begin), hourOf(end)) > 0;
  }
  bool overlap(ptime begin, ptime end) const { return hasIntersection(begin, end); }
  bool haveBlock(ptime begin, ptime end) const { return contains(hourOf(begin), hourOf(end)); }
  bool haveBlock(ptime begin, ptime end, time_duration length) const {
    const int least = std::max(0, static_cast<int>(length.hours()));
    for (int hour = hourOf(begin); hour + least <= hourOf(end); ++hour) {
      if (contains(hour, hour + least)) return true;
    }
    return false;
  }

  time_duration getTotalDur() const { return hours(hours_.size()); }
  time_duration getTotalDur(ptime begin, ptime end) const {
    return hours(count(hourOf(begin), hourOf(end)));
  }
  /// Precondition: `least` is positive.
  bool haveCompleteDays(ptime begin, ptime end, int least) const {
    for (int day = 0; 24 * (day + least) <= hourOf(end); ++day) {
      if (hourOf(begin) <= 24 * day && contains(24 * day, 24 * (day + least))) return true;
    }
    return false;
  }
  bool haveFullDay(date day) const { return haveBlock(ptime(day), ptime(day + days(1))); }
  std::vector<bool> getFullDayInvolveStatus(date first, date last) const {
    std::vector<bool> flags;
    for (date day = first; day <= last; day += days(1)) flags.push_back(haveFullDay(day));
    return flags;
  }
  std::vector<bool> getInvolveStatus(date first, date last) const {
    const auto sums = getStatisticByDay();
    std::vector<bool> flags;
    for (date day = first; day <= last; day += days(1)) flags.push_back(sums.count(day) > 0);
    return flags;
  }
  std::map<date, time_duration> getStatisticByDay() const {
    std::map<date, time_duration> sums;
    for (const int hour : hours_) {
      sums[at(hour).date()] += hours(1);
      sums[at(hour + 1).date()];  // an end at midnight touches the next day
    }
    return sums;
  }

  std::optional<ptime> workEnd(ptime start, time_duration work) const {
    auto hour = hours_.lower_bound(hourOf(start));
    for (; work > time_duration(); work -= hours(1), ++hour) {
      if (hour == hours_.end()) return std::nullopt;
      start = at(*hour + 1);
    }
    return start;
  }
  std::optional<ptime> workStart(ptime end, time_duration work) const {
    auto hour = hours_.lower_bound(hourOf(end));
    for (; work > time_duration(); work -= hours(1)) {
      if (hour == hours_.begin()) return std::nullopt;
      end = at(*--hour);
    }
    return end;
  }
  std::optional<ptime> nextWorking(ptime t) const {
    const auto hour = hours_.lower_bound(hourOf(t));
    return hour == hours_.end() ? std::nullopt : std::optional<ptime>(at(*hour));
  }
  std::optional<ptime> lastWorking(ptime t) const {
    const auto hour = hours_.lower_bound(hourOf(t));
    return hour == hours_.begin() ? std::nullopt : std::optional<ptime>(at(*std::prev(hour) + 1));
  }

  ///@{
  /// Precondition: `length` is positive.
  HourSet getBlockAtPos4Dur(ptime pos, time_duration length) const {
    HourSet result;
    auto hour = hours_.lower_bound(hourOf(pos));
    for (; hour != hours_.end() && result.getTotalDur() < length; ++hour) {
      result.hours_.insert(*hour);
    }
    if (result.getTotalDur() < length) return {};
    const bool isInLastSlot = contains(*result.hours_.rbegin(), *hours_.rbegin() + 1);
    return isInLastSlot ? HourSet() : result;
  }
  HourSet getBlockAtPos4DurByEnd(ptime pos, time_duration length) const {
    int end = hourOf(pos);
    while (has(end - 1)) --end;
    HourSet result;
    for (auto hour = hours_.lower_bound(end); hour != hours_.begin();) {
      result.hours_.insert(*--hour);
      if (result.getTotalDur() == length) return result;
    }
    return {};
  }
  ///@}

 private:
  static int hourOf(ptime time) { return static_cast<int>((time - at(0)).hours()); }

  void insert(ptime begin, ptime end) {
    for (int hour = hourOf(begin); hour < hourOf(end); ++hour) hours_.insert(hour);
  }
  bool has(int hour) const { return hours_.count(hour) > 0; }
  std::ptrdiff_t count(int from, int to) const {
    return std::distance(hours_.lower_bound(from), hours_.lower_bound(to));
  }
  // A time between two hours belongs to both.
  bool contains(int from, int to) const {
    return count(from, to) == to - from && count(from - 1, to + 1) > 0;
  }

  std::set<int> hours_;
};

}  // namespace test_support
