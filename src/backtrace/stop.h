// Ends a process that cannot continue, with its reason.
#pragma once

#include <string>

namespace libvarrow {

/// Writes `reason`, a line without its line end, to standard error.
void printReason(const std::string& reason);

/// Writes `reason` and raises a BackTraceException.
[[noreturn]] void stop(const std::string& reason);

/// Raises a BackTraceException for a `reason` that was just logged at ERROR. Writes `reason` first,
/// unless the log is not configured and wrote it to standard error itself.
[[noreturn]] void stopAfterLogging(const std::string& reason);

}  // namespace libvarrow
