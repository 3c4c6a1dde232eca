// Crash handling: a back-trace in the log, and a dump file if wanted.
#pragma once

#include "libvarrow/Export.h"

namespace libvarrow {

/// Installs sig_handler for SIGSEGV and SIGABRT, gives the calling thread a crash stack, and prints
/// "init backtrace" (at exit: "deinit backtrack") to standard output. `writeDumpFile`: a crash also
/// writes "TIME.coredump", the raw call stack, to the current directory. Where the system ends a
/// process whose file grows beyond its limit (SIGXFSZ), that becomes an error while writing, unless
/// the host has a handler. Call once near start-up; later calls only log. Thread safe.
LIBVARROW_API void init_error_handler(bool writeDumpFile);

/// Gives the calling thread a stack of its own for sig_handler, so that a stack overflow in it ends
/// in a back-trace too. Every thread asks for itself, best first thing (the threads of an OpenMP
/// region, say); the threads of init_error_handler and of timed dumpers have done so. Given back
/// when the thread ends; a second call does nothing.
///
///     std::thread worker([] { libvarrow::useCrashStack(); plan(); });
LIBVARROW_API void useCrashStack();

/// Prints the call stack as addresses to standard error, once in a process, then logs it with names
/// at ERROR (so to standard error only before InitRootLogger), writes the dump file if that is
/// switched on, and aborts: the process always ends by SIGABRT, and a segmentation fault is logged
/// a second time on that way. What the log throws is reported, and the handler goes on. A second
/// fault ends the process at once. A handler that has done nothing for 4 seconds, because the crash
/// left a lock held, is ended, and so is one that is still at work after a minute.
///
/// Installed by init_error_handler, it begins the call stack with the call when an address without
/// code was called, and adds the registers when the stack cannot be read whole.
LIBVARROW_API void sig_handler(int sig);

}  // namespace libvarrow
