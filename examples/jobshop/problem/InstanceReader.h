// Reads instances in the standard text form.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "problem/Instance.h"

namespace jobshop {

// Every sum of times stays below 10^15, which Time and double can represent.
constexpr std::size_t kMaxJobs = 1000;
constexpr std::size_t kMaxMachines = 1000;
constexpr Time kMaxDuration = 1'000'000'000;
constexpr std::size_t kMaxFileSize = std::size_t{16} * 1024 * 1024;

/// Error in an instance file. what() is "FILE:LINE: expected ..., found ...", or "FILE: ..." for a
/// file that cannot be read.
class InstanceError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Returns the instance in `text`: the number of jobs and of machines, then for each job a line of
/// as many pairs (machine from 0, time) as machines. Ignores lines that are blank or start with
/// '#'; any run of blanks and tabs separates. `fileName` gives the instance its name and is used in
/// errors. Throws InstanceError when `text` is invalid.
Instance parseInstance(std::string_view text, const std::string& fileName);

/// Returns parseInstance() of the file's text. Throws InstanceError when the file cannot be read.
Instance readInstance(const std::string& fileName);

}  // namespace jobshop
