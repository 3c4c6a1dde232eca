#include "calendar/ShopCalendar.h"

#include <libvarrow/time/time_range.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace jobshop {

namespace {

void requireMachine(const CalendarSettings& settings, std::size_t index, std::size_t count) {
  const std::uint64_t machine = settings.machines[index].machine;
  if (machine < count) return;
  throw std::runtime_error("machines[" + std::to_string(index) + "].machine: unknown machine " +
                           std::to_string(machine) + "; the instance has 0 to " +
                           std::to_string(count - 1));
}

}  // namespace

ShopCalendar::ShopCalendar(CalendarSettings settings, std::size_t machineCount)
    : settings_(std::move(settings)),
      clock_(settings_->start, settings_->timeUnit),
      calendarOf_(machineCount) {
  const WorkingHours& shop = settings_->shop;
  calendars_.emplace_back(shop, clock_, settings_->end());
  for (std::size_t i = 0; i < settings_->machines.size(); ++i) {
    requireMachine(*settings_, i, machineCount);
    const MachineHours& own = settings_->machines[i];
    calendarOf_[own.machine] = calendars_.size();
    calendars_.emplace_back(own.within(shop), clock_, settings_->end());
  }
  for (std::size_t machine = 0; machine < machineCount; ++machine) requireWork(machine);
}

void ShopCalendar::requireWork(std::size_t machine) const {
  if (of(machine).hasWorkingTime()) return;
  throw std::runtime_error("machine " + std::to_string(machine) + " never works from " +
                           libvarrow::time2str(settings_->start) + " to " +
                           libvarrow::time2str(settings_->end()));
}

Span ShopCalendar::search(std::size_t machine, Time from, Time time) const {
  if (const std::optional<Span> span = of(machine).run(from, time)) return *span;
  throw std::runtime_error("machine " + std::to_string(machine) + " has less than " +
                           std::to_string(time) + " time units of working time from time " +
                           std::to_string(from) + " on: its calendar ends at " +
                           libvarrow::time2str(settings_->end()) + ", after " +
                           std::to_string(settings_->days) + " \"days\"");
}

}  // namespace jobshop
