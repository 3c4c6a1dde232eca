// Initialization of a process.
#pragma once

#include "libvarrow/Export.h"

namespace libvarrow {

/// Returns the number of OpenMP threads for `processors` processors: nine tenths of them, or half
/// of more than 100, rounded up. Returns 8 for 8, 15 for 16 and 64 for 128.
LIBVARROW_API unsigned int openMPThreadCount(int processors);

/// Initializer of OpenMP. Its construction sets the calling thread's OpenMP thread count from the
/// number of processors and prints it to standard output. Construct it on the main thread, before
/// any parallel region.
class LIBVARROW_API OpenMPInit {
 public:
  OpenMPInit();
};

/// Prepares the process: installs the error handler (without dump files) and sets the OpenMP thread
/// count. Call it once, at the start of main(), before InitRootLogger.
LIBVARROW_API void porcessCommonInit();

}  // namespace libvarrow
