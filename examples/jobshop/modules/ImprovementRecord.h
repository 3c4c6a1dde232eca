// The statistic that records how a schedule got shorter.
#pragma once

#include <libvarrow/statistics/CommonStatistics.h>

#include <chrono>
#include <cstdint>
#include <mutex>
#include <vector>

#include "problem/Instance.h"

namespace jobshop {

/// Makespans of a search, each with the iteration that found it and the time since the search
/// began. Rendered as a list of {"iteration": 12, "makespan": 57, "milliseconds": 3}. Thread-safe.
class ImprovementRecord : public libvarrow::CommonStatistics {
 public:
  void add(std::uint64_t iteration, std::chrono::milliseconds time, Time makespan);

  Json::Value toJsonValue4Bind() const override;

 private:
  struct Improvement {
    std::uint64_t iteration = 0;
    std::chrono::milliseconds time{};
    Time makespan = 0;
  };

  mutable std::mutex mutex_;
  std::vector<Improvement> improvements_;
};

}  // namespace jobshop
