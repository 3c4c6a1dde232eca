#include "gantt/TimeAxis.h"

#include <libvarrow/time/time_range.h>

#include <algorithm>
#include <boost/date_time/gregorian/gregorian_types.hpp>

#include "gantt/GanttLayout.h"

namespace jobshop {

namespace {

using boost::gregorian::date;
using boost::posix_time::hours;
using boost::posix_time::minutes;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

// Room for a label, in pixels.
constexpr double kTimeRoom = 56;
constexpr double kDayRoom = 84;

Time unitStep(Time end, double scale) {
  const double room = kDigit * static_cast<double>(std::to_string(end).size()) + 44;
  for (Time power = 1;; power *= 10) {
    for (const Time factor : {1, 2, 5}) {
      if (static_cast<double>(factor * power) * scale >= room) return factor * power;
    }
  }
}

std::string dayLabel(const date& day) {
  return std::string(day.day_of_week().as_short_string()) + ' ' + std::to_string(day.day()) + ' ' +
         day.month().as_short_string();
}

class ClockAxis {
 public:
  ClockAxis(Time end, double scale, const ShopClock& clock)
      : start_(clock.pointAt(0)), end_(clock.pointAt(end)), unit_(clock.unit()), scale_(scale) {}

  TimeAxis make() const {
    TimeAxis axis;
    addDays(axis);
    for (const int step : {1, 5, 10, 15, 30, 60, 120, 180, 240, 360, 720}) {
      if (width(minutes(step)) < kTimeRoom) continue;
      addTimes(axis, minutes(step));
      break;
    }
    return axis;
  }

 private:
  double units(const time_duration& duration) const {
    return static_cast<double>(duration.ticks()) / static_cast<double>(unit_.ticks());
  }
  double width(const time_duration& duration) const { return units(duration) * scale_; }

  // Skips midnights, which the names of days label.
  void addTimes(TimeAxis& axis, const time_duration& step) const {
    for (ptime time(start_.date()); time <= end_; time += step) {
      if (time < start_ || time.time_of_day().ticks() == 0) continue;
      axis.ticks.push_back(
          {units(time - start_), libvarrow::time2strIgnoreSecond(time).substr(11)});
    }
  }

  // Adds midnights, one for as many days as a label needs. Also labels the first day where it has
  // the room.
  void addDays(TimeAxis& axis) const {
    int step = 1;
    while (width(hours(24)) * step < kDayRoom) step *= step == 1 ? 7 : 2;
    const ptime midnight(start_.date() + boost::gregorian::days(start_.time_of_day().ticks() > 0));
    if (midnight > start_ && width(std::min(midnight, end_) - start_) >= kDayRoom) {
      axis.days.push_back({0, dayLabel(start_.date())});
    }
    for (ptime day = midnight; day < end_; day += hours(24 * step)) {
      axis.days.push_back({units(day - start_),
                           step == 1 ? dayLabel(day.date()) : libvarrow::time2str(day.date())});
    }
  }

  ptime start_;
  ptime end_;
  time_duration unit_;
  double scale_;
};

}  // namespace

TimeAxis timeAxis(Time end, double scale, const ShopClock& clock) {
  if (clock.isSet()) return ClockAxis(end, scale, clock).make();
  TimeAxis axis;
  const Time step = unitStep(end, scale);
  for (Time time = 0; time <= end; time += step) {
    axis.ticks.push_back({static_cast<double>(time), std::to_string(time)});
  }
  return axis;
}

}  // namespace jobshop
