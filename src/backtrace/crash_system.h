// The system functions of the crash handler. All of them except installSignalHandler may be called
// in any state of a process that is about to end. On POSIX systems they do not allocate. There,
// readStack, printFrames and writeDumpFile may wait for a lock of the loader, until the watchdog
// ends the process; the others are async-signal-safe.
#pragma once

#include <array>
#include <cstddef>

namespace libvarrow::crash {

/// The largest number of a crash's frames that belong to the handler: the function given to
/// installSignalHandler, the function that the system calls, and the frame through which the system
/// calls it.
constexpr std::size_t kHandlerFrames = 3;
/// The largest number of frames that are reported.
constexpr std::size_t kMaxFrames = 128;

/// A call stack as addresses, the innermost frame first.
struct Stack {
  std::array<void*, kHandlerFrames + kMaxFrames + 1> frames{};  ///< ends with a null address
  std::size_t count = 0;
  std::size_t handlerFrames = 0;  ///< those at the beginning that belong to the handler
  bool isWhole = true;            ///< false: the memory after the last frame cannot be read
};

/// Installs `report` for every row of kCrashSignals; it runs on the thread's crash stack if there
/// is one. It gets the signal and the interrupted context, and does not return. A call of an
/// address without code is undone, so that the call stack continues from the caller.
void installSignalHandler(void (*report)(int sig, const void* place));

/// Ends the process by SIGABRT after `sig` was reported. The handler of SIGABRT runs before that if
/// it was not reset.
[[noreturn]] void abortAfter(int sig);

/// Starts a watchdog that ends the process by SIGABRT when the calling thread does nothing for some
/// seconds or still works after a minute. Later calls in a process do nothing.
void startWatchdog();

/// Returns to the system's own handling of `sig`.
void resetSignalHandler(int sig);

/// Fills `stack`. The first frame is the caller or, where the system allows it, the interrupted
/// context `place`. A broken stack ends where it cannot be read.
void readStack(Stack& stack, const void* place);

/// Writes `stack` without the handler's frames to standard error.
void printFrames(const Stack& stack);

/// Writes the call stack of the caller, or of the interrupted context `place`, to `fileName` in the
/// form that the system's debuggers read.
void writeDumpFile(const char* fileName, const void* place);

/// Writes the registers of the interrupted context `place` to standard error. Does nothing for
/// null.
void printRegisters(const void* place);

/// Writes `text` to standard error.
void printText(const char* text);

/// Returns the number by which debuggers identify the calling thread.
long threadNumber();

/// Sleeps for a moment.
void sleepBriefly();

}  // namespace libvarrow::crash
