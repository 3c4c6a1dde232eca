// The working time of all machines of a shop.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "calendar/CalendarSettings.h"
#include "calendar/MachineCalendar.h"
#include "calendar/ShopClock.h"
#include "calendar/Span.h"

namespace jobshop {

class ShopCalendar {
 public:
  /// Creates a calendar that is not set: every machine always works, at efficiency 1, without a
  /// clock.
  ShopCalendar() = default;
  /// Creates a calendar for each machine. Throws std::runtime_error when `settings` name an unknown
  /// machine or a machine never works.
  ShopCalendar(CalendarSettings settings, std::size_t machineCount);

  bool isSet() const { return settings_.has_value(); }
  /// Returns the clock; not set when the calendar is not.
  const ShopClock& clock() const { return clock_; }
  /// Returns the settings. Precondition: the calendar is set.
  const CalendarSettings& settings() const { return *settings_; }

  const MachineCalendar& of(std::size_t machine) const {
    return isSet() ? calendars_[calendarOf_[machine]] : always_;
  }

  /// Returns of(machine).run(). Throws std::runtime_error, with the machine and the end of its
  /// calendar, when the time does not fit.
  Span run(std::size_t machine, Time from, Time time) const {
    const MachineCalendar& calendar = of(machine);
    // Called for every operation of every schedule: inline when no search is needed.
    return calendar.alwaysWorks() ? Span{from, from + time} : search(machine, from, time);
  }

 private:
  Span search(std::size_t machine, Time from, Time time) const;
  void requireWork(std::size_t machine) const;

  std::optional<CalendarSettings> settings_;
  ShopClock clock_;
  MachineCalendar always_;
  std::vector<MachineCalendar> calendars_;  // the shop's, then one for each machine with hours
  std::vector<std::size_t> calendarOf_;
};

}  // namespace jobshop
