// Reads the schedule of a debug dump.
#pragma once

#include <string>
#include <vector>

#include "problem/Instance.h"
#include "schedule/Schedule.h"

namespace jobshop {

/// Returns the operations of a file that scheduleCsv wrote. Throws std::runtime_error, with file
/// and line, when it cannot be read or names an operation that `instance` does not have.
std::vector<ScheduledOperation> readScheduleCsv(const std::string& fileName,
                                                const Instance& instance);

}  // namespace jobshop
