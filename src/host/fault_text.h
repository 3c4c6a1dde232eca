// Lists of faults, and faults as lines for users.
#pragma once

#include <string>
#include <vector>

#include "libvarrow/host/RunResult.h"

namespace libvarrow::host {

/// Returns one line for each fault, without a line end: "FILE:LINE:COLUMN: error: PATH: message".
std::vector<std::string> faultLines(const FileFaults& faults);

/// Adds the faults of a file, unless `list` has the same: several pipelines may name a rule file.
void addFaults(std::vector<FileFaults>& list, FileFaults added);

/// Returns the number of errors.
std::size_t errorCount(const std::vector<FileFaults>& faults);

/// Returns the first error and the number of further ones: "FILE:3:7: PATH: message; and 2 more
/// errors".
std::string firstError(const std::vector<FileFaults>& faults);

}  // namespace libvarrow::host
