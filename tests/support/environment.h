// Properties of this process and its system.
#pragma once

#include <chrono>
#include <cstddef>
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

/// Ends this process at once, like SIGKILL. For runInChild, that is the signal of its end.
[[noreturn]] void killThisProcess();
constexpr int kKillSignal = 9;

/// Returns the processor time of all threads of this process.
std::chrono::nanoseconds processorTime();

/// Returns whether both signals have the same handler.
bool haveSameHandler(int one, int other);

/// Returns the name of a signal without "SIG".
std::string signalName(int sig);

/// Returns a path from which `text` can be read: that of a pipe, on Windows of a file.
std::string pathOfText(const std::string& text);

/// Returns the allocated bytes of the heap, and the number of open files and other system objects.
std::size_t heapBytes();
std::size_t openObjects();

/// Ends this process when it has used so much processor time, where the system has such a limit.
void limitProcessorTime(unsigned seconds);

}  // namespace test_support
