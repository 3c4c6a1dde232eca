// The line that a crash writes last.
#pragma once

#include <string_view>

namespace libvarrow::crash {

/// Keeps the first line of `reason` for printLastLine(), unless an earlier reason is kept.
/// Thread-safe and async-signal-safe.
void noteReason(std::string_view reason) noexcept;

/// Writes the line of setCrashLine() with the reason, or with the name of `sig` if none is kept, to
/// standard error. Does nothing without a line. Async-signal-safe.
void printLastLine(int sig) noexcept;

}  // namespace libvarrow::crash
