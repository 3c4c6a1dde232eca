// A run of the program, with log, signals, progress and summary.
#pragma once

#include <ostream>

#include "host/HostState.h"
#include "host/system.h"

namespace libvarrow::host {

/// Runs a pipeline on new data of the host, in its folder as the current directory. Writes the
/// result to `out`, faults to standard error, and the line for the user to `state.lastLine`. Throws
/// std::exception when the run cannot start. After a signal the caller ends the process by it.
ExitStatus runPipeline(RunOptions options, HostState& state, system::ResultStream& results,
                       bool asJson, std::ostream& out);

}  // namespace libvarrow::host
