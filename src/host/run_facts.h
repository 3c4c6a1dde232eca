// The members of a run's record that are known when the run begins.
#pragma once

#include <json/value.h>

#include "host/HostState.h"
#include "libvarrow/host/RunOptions.h"

namespace libvarrow::host {

/// Returns host, versions, command line, pipeline file and its overrides.
Json::Value runFacts(const RunOptions& options, const HostState& state);

}  // namespace libvarrow::host
