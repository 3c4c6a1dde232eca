// Crash handling: writes a back-trace to the log and, on request, a dump file.
#pragma once

#include <string_view>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Installs sig_handler for SIGSEGV and SIGABRT, gives the calling thread a crash stack, and prints
/// "init backtrace" (at exit: "deinit backtrack") to standard output. With `writeDumpFile`, a crash
/// also writes "TIME.coredump", the raw call stack, to the current directory. On systems that end a
/// process whose file exceeds its size limit (SIGXFSZ), the write fails instead, unless the host
/// has a handler. Call it once near start-up; later calls only log. Thread-safe.
LIBVARROW_API void init_error_handler(bool writeDumpFile);

/// Gives the calling thread a separate stack for sig_handler, so that a stack overflow of the
/// thread also produces a back-trace. Call it first in every thread, such as those of an OpenMP
/// region. The threads of init_error_handler and of timed dumpers have such a stack already. The
/// stack is released when the thread ends. A second call does nothing.
///
///     std::thread worker([] { libvarrow::useCrashStack(); plan(); });
LIBVARROW_API void useCrashStack();

/// Writes the call stack as addresses to standard error, once per process, then logs it with names
/// at ERROR (before InitRootLogger only to standard error), writes the dump file if enabled, and
/// aborts. The process always ends by SIGABRT, so any other signal is logged a second time. An
/// exception of the log is reported, and the handler continues. A second fault ends the process
/// immediately. The process also ends when the handler does nothing for 4 seconds, because the
/// crash left a lock held, or still works after a minute.
///
/// As installed by init_error_handler, it begins the call stack with the call when an address
/// without code was called, and also writes the registers when the stack cannot be read completely.
LIBVARROW_API void sig_handler(int sig);

/// Sets the last line of a crash's report on standard error: `text`, such as "orders:
/// pipeline.json: 1_Plan", and the reason if it is known, otherwise the signal. Initially "", which
/// means no such line. Keeps the first 1,023 bytes; they should contain no line feed. Does not
/// allocate. Not thread-safe, except that other threads may crash meanwhile.
LIBVARROW_API void setCrashLine(std::string_view text) noexcept;

}  // namespace libvarrow
