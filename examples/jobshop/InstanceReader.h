// Reads instances in the standard text form.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Instance.h"

namespace jobshop {

// Every sum of times stays below 10^15, which neither Time nor double has trouble with.
constexpr std::size_t kMaxJobs = 1000;
constexpr std::size_t kMaxMachines = 1000;
constexpr Time kMaxDuration = 1'000'000'000;
constexpr std::size_t kMaxFileSize = std::size_t{16} * 1024 * 1024;

/// what() is "FILE:LINE: expected ..., found ...", or "FILE: ..." for a file that cannot be read.
class InstanceError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The instance in `text`: the number of jobs and of machines, then for each job a line of as many
/// pairs (machine from 0, time) as there are machines. Lines that are blank or start with '#' are
/// passed over, and any run of blanks and tabs separates. `fileName` stands in errors; the instance
/// takes its name from it. Throws InstanceError.
Instance parseInstance(std::string_view text, const std::string& fileName);

/// parseInstance of the file's text.
Instance readInstance(const std::string& fileName);

}  // namespace jobshop
