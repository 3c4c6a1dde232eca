// What the crash handler asks of the system. Except for installSignalHandler, all of it may be
// called in any state of a process that is about to end: it neither allocates nor locks.
#pragma once

#include <array>
#include <cstddef>

namespace libvarrow::crash {

/// The frames of a crash that are the handler's own: what installSignalHandler was given, the
/// function that the system calls, and the frame through which the system calls it.
constexpr std::size_t kHandlerFrames = 3;
/// At most so many frames are reported.
constexpr std::size_t kMaxFrames = 128;

/// A call stack as addresses, the innermost first.
struct Stack {
  std::array<void*, kHandlerFrames + kMaxFrames + 1> frames{};  ///< ends by a null address
  std::size_t count = 0;
  bool isWhole = true;  ///< false: the memory behind the last frame cannot be read
};

/// Has `report` called for SIGSEGV and SIGABRT, on the thread's crash stack where it has one. It
/// gets the signal and the interrupted place, and does not return. A call of what is not code is
/// taken back, so that the call stack goes on from the caller.
void installSignalHandler(void (*report)(int sig, const void* place));

/// Ends the process by SIGABRT when the calling thread does nothing for some seconds, or is still
/// at work after a minute. The first call in a process counts.
void startWatchdog();

/// Fills `stack`, which begins with the caller. A broken stack ends where it cannot be read.
void readStack(Stack& stack);

/// Writes `stack` without the handler's frames to standard error.
void printFrames(const Stack& stack);

/// Writes the registers of the interrupted `place` to standard error. Does nothing for null.
void printRegisters(const void* place);

/// Writes `text` to standard error.
void say(const char* text);

/// The number under which debuggers know the calling thread.
long threadNumber();

/// Sleeps for a moment.
void rest();

}  // namespace libvarrow::crash
