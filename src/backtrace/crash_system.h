// What the crash handler asks of the system. But for installSignalHandler, all of it may be called
// in any state of a process that is about to end: it neither allocates nor locks.
#pragma once

namespace libvarrow::crash {

/// Has `handler` called for SIGSEGV and SIGABRT, on the thread's crash stack where it has one.
void installSignalHandler(void (*handler)(int));

/// Ends the process by SIGABRT some seconds after the first call, whatever hangs by then.
void startWatchdog();

/// The call stack as addresses, to standard error.
void printFrames();

/// Writes `text` to standard error.
void say(const char* text);

/// The number under which debuggers know the calling thread.
long threadNumber();

/// Sleeps for a moment.
void rest();

}  // namespace libvarrow::crash
