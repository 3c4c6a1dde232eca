// Properties of this process and its system.
#pragma once

#include <string>

namespace test_support {

void setVariable(const char* name, const std::string& value);
void unsetVariable(const char* name);

/// Makes the C library read the time zone from the variable TZ again.
void readTimeZone();

bool isLibraryLoaded(const std::string& path);

/// Returns whether a call stack names functions and lines. On Windows that needs a debugging
/// engine.
bool framesHaveNames();

/// Ends this process with std::quick_exit, or without exit handlers where the C library lacks it.
[[noreturn]] void endQuickly();

/// Ends this process when it has used so much processor time, where the system has such a limit.
void limitProcessorTime(unsigned seconds);

}  // namespace test_support
