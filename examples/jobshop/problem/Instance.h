// A job-shop problem: which machines each job visits, in which order, and for how long.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace jobshop {

/// Whole time units from the start of the schedule.
using Time = std::int64_t;

struct Operation {
  std::size_t machine = 0;
  Time duration = 0;
};

/// Jobs, operations and machines are numbered from 0.
struct Instance {
  std::string name;
  std::size_t machineCount = 0;
  std::vector<std::vector<Operation>> jobs;  ///< of each job, its operations in order

  std::size_t operationCount() const;
};

}  // namespace jobshop
