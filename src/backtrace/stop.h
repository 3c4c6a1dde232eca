// The end of a process that cannot go on, with its reason.
#pragma once

#include <string>

namespace libvarrow {

/// Writes `reason`, a line without its end, to standard error.
void sayReason(const std::string& reason);

/// Says `reason` and raises a BackTraceException.
[[noreturn]] void stop(const std::string& reason);

/// The same for a `reason` that was logged at ERROR just now. Does not say it again when the log,
/// which nobody configured, went to standard error.
[[noreturn]] void stopAfterLogging(const std::string& reason);

}  // namespace libvarrow
