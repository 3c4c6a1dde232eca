// The members of a run's record that are known when the run begins.
#pragma once

#include <json/value.h>

#include "host/HostState.h"
#include "libvarrow/host/RunOptions.h"

namespace libvarrow::host {

/// Returns host, versions and files of the code, machine, process, command line, pipeline file, its
/// overrides and the options of the run.
Json::Value runFacts(const RunOptions& options, const HostState& state);

/// Returns "all", "brief" or "none".
const char* dumpLevelText(DumpLevel level);

}  // namespace libvarrow::host
