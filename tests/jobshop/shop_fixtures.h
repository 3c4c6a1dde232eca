// Instances and schedules that several tests plan with.
#pragma once

#include <cppbind/imp/json_decode_binder.h>

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

}  // namespace jobshop_test
