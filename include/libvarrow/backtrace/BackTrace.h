// Crash handling: a back-trace in the log, and a dump file if wanted.
#pragma once

#include "libvarrow/Export.h"

namespace libvarrow {

/// Installs sig_handler for SIGSEGV and SIGABRT and prints "init backtrace" (at exit: "deinit
/// backtrack") to standard output. `writeDumpFile`: a crash also writes "TIME.coredump", the raw
/// call stack, to the current directory. Call once near start-up; later calls only log. Thread
/// safe.
LIBVARROW_API void init_error_handler(bool writeDumpFile);

/// Logs the call stack at ERROR (so to standard error only before InitRootLogger), writes the dump
/// file if that is switched on, and aborts: the process always ends by SIGABRT, and a segmentation
/// fault is logged a second time on that way.
LIBVARROW_API void sig_handler(int sig);

}  // namespace libvarrow
