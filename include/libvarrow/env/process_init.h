// What a process does first.
#pragma once

#include "libvarrow/Export.h"

namespace libvarrow {

/// How many OpenMP threads a machine with `processors` gets: nine tenths of them, rounded up, and
/// half of more than 100. 8 give 8, 16 give 15, 128 give 64.
LIBVARROW_API unsigned int openMPThreadCount(int processors);

/// Constructing one sets the calling thread's OpenMP thread count by the machine's processors and
/// says so on standard output. For the main thread, before any parallel region.
class LIBVARROW_API OpenMPInit {
 public:
  OpenMPInit();
};

/// Prepares the process: the error handler (without dump files) and the OpenMP thread count. Call
/// it once, first thing in main(), before InitRootLogger.
LIBVARROW_API void porcessCommonInit();

}  // namespace libvarrow
