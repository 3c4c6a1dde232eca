// Instances and schedules that several tests plan with.
#pragma once

#include <cppbind/imp/json_decode_binder.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "ActiveScheduler.h"
#include "InstanceReader.h"
#include "Schedule.h"
#include "calendar/ShopCalendar.h"
#include "support/support.h"

namespace jobshop_test {

inline jobshop::Schedule planned(const jobshop::Instance& instance, const std::string& rule,
                                 const jobshop::ShopCalendar& calendar = {}) {
  const auto urgency = jobshop::findDispatchRule(rule).urgency;
  return {jobshop::buildActiveSchedule(instance, urgency, calendar), rule};
}

/// The settings that `keys`, the members of a JSON object, stand for.
inline jobshop::CalendarSettings settingsFrom(const std::string& keys) {
  jobshop::CalendarSettings settings;
  cppbind::JsonDecodeBinder().decode(test_support::json("{" + keys + "}"), settings);
  return settings;
}

/// A job may come to a machine more than once and not at all to another.
inline jobshop::Instance randomInstance(std::uint32_t seed, std::size_t jobs, std::size_t machines,
                                        jobshop::Time shortest) {
  std::mt19937 random(seed);
  jobshop::Instance instance = {"random" + std::to_string(seed), machines, {}};
  instance.jobs.assign(jobs, std::vector<jobshop::Operation>(machines));
  for (auto& job : instance.jobs) {
    for (jobshop::Operation& operation : job) {
      operation = {random() % machines, shortest + static_cast<jobshop::Time>(random() % 9)};
    }
  }
  return instance;
}

inline std::vector<jobshop::DayWindow> randomWindows(std::mt19937& random, unsigned longest) {
  std::vector<jobshop::DayWindow> windows(1 + random() % 2);
  for (jobshop::DayWindow& window : windows) {
    window.from = boost::posix_time::minutes(10 * (random() % 144));
    window.to = window.from + boost::posix_time::minutes(10 * (1 + random() % longest));
    if (random() % 2 == 0) window.days.resize(1 + random() % 7);
  }
  return windows;
}

/// Shifts, breaks and closed hours that overlap and end within time units; machine 0 works at
/// another pace, the last one always.
inline jobshop::CalendarSettings randomCalendar(std::uint32_t seed, std::size_t machineCount) {
  namespace posix_time = boost::posix_time;
  std::mt19937 random(seed);
  const int units[] = {7, 10, 60};
  jobshop::CalendarSettings settings;
  settings.start = posix_time::time_from_string("2024-02-28 05:50:00");
  settings.timeUnit = posix_time::minutes(units[seed % 3]);
  settings.shop.shifts = randomWindows(random, 72);
  settings.shop.shifts->push_back({posix_time::hours(2), posix_time::hours(5)});
  settings.shop.breaks = randomWindows(random, 6);
  const auto closed = settings.start + posix_time::minutes(random() % 3000);
  settings.shop.closed.addTimeBlock(closed, closed + posix_time::hours(1 + random() % 30));
  settings.machines.resize(machineCount);
  for (std::size_t machine = 0; machine < machineCount; ++machine) {
    settings.machines[machine].machine = machine;
  }
  settings.machines[0].efficiency = (1 + static_cast<double>(random() % 20)) / 10;
  if (machineCount > 1) settings.machines.back().shifts.emplace();
  return settings;
}

}  // namespace jobshop_test
