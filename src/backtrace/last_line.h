// The line that a crash writes last.
#pragma once

#include <string_view>

namespace libvarrow::crash {

/// Keeps the first line of `reason` for printLastLine(), unless an earlier reason is kept.
/// Thread-safe and async-signal-safe.
void noteReason(std::string_view reason) noexcept;

/// Writes the line of setCrashLine() with the reason to standard error. Does nothing without a
/// line. Async-signal-safe.
void printLastLine() noexcept;

/// Ends the report of `sig`, which is the reason unless another one is kept: writes the last line
/// when no report follows. After other signals the process ends by SIGABRT, which is reported, too.
/// Async-signal-safe.
void endReport(int sig) noexcept;

}  // namespace libvarrow::crash
