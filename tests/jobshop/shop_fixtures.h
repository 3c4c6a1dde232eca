// Instances and schedules that several tests plan with.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "ActiveScheduler.h"
#include "InstanceReader.h"
#include "Schedule.h"

namespace jobshop_test {

inline jobshop::Instance shipped(const std::string& name) {
  return jobshop::readInstance(JOBSHOP_FOLDER "/data/" + name + ".txt");
}

inline jobshop::Schedule planned(const jobshop::Instance& instance, const std::string& rule) {
  return {jobshop::buildActiveSchedule(instance, jobshop::findDispatchRule(rule).urgency), rule};
}

/// With `revisits`, a job may come to a machine more than once and not at all to another.
inline jobshop::Instance randomInstance(std::uint32_t seed, std::size_t jobs, std::size_t machines,
                                        jobshop::Time shortest, bool revisits) {
  std::mt19937 random(seed);
  jobshop::Instance instance;
  instance.name = "random" + std::to_string(seed);
  instance.machineCount = machines;
  for (std::size_t job = 0; job < jobs; ++job) {
    std::vector<jobshop::Operation> operations;
    for (std::size_t i = 0; i < machines; ++i) {
      operations.push_back({revisits ? random() % machines : i,
                            shortest + static_cast<jobshop::Time>(random() % 9)});
    }
    std::shuffle(operations.begin(), operations.end(), random);
    instance.jobs.push_back(std::move(operations));
  }
  return instance;
}

}  // namespace jobshop_test
