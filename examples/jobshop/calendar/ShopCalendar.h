// The working time of all machines of a shop.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "ShopClock.h"
#include "calendar/CalendarSettings.h"
#include "calendar/MachineCalendar.h"
#include "calendar/Span.h"

namespace jobshop {

class ShopCalendar {
 public:
  /// No calendar: every machine always works, at efficiency 1, and there is no clock.
  ShopCalendar() = default;
  /// Throws std::runtime_error for a machine that the shop does not have, and one that never works.
  ShopCalendar(CalendarSettings settings, std::size_t machineCount);

  bool isSet() const { return settings_.has_value(); }
  /// Not set when the calendar is not.
  const ShopClock& clock() const { return clock_; }
  /// What a calendar that is set was made from.
  const CalendarSettings& settings() const { return *settings_; }

  const MachineCalendar& of(std::size_t machine) const {
    return isSet() ? calendars_[calendarOf_[machine]] : always_;
  }

  /// of(machine).run, but what does not fit throws std::runtime_error with the machine and the end
  /// of its calendar.
  Span run(std::size_t machine, Time from, Time time) const {
    const MachineCalendar& calendar = of(machine);
    // Asked for every operation of every schedule: what needs no search costs no call.
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
