// System calls and allocations that fail on demand. The program that links failing_calls.cpp
// replaces them for the libraries that it loads.
#pragma once

#include <string>

namespace fault_injection {

/// Counts the calls of `kind` (memory, open, read, write, close, rename, mkdir) from now on, and
/// lets the `nth` fail: the first for 1, none for 0. Writes a line "KIND PATH" to standard error
/// then; the path is that of the file, if there is one.
void start(const std::string& kind, unsigned long nth);

/// Ends the counting. Returns the number of calls.
unsigned long stop();

}  // namespace fault_injection
