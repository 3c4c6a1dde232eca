// One run of a pipeline, from loading plug-ins to printing the summary.
#pragma once

#include <optional>
#include <string>

#include "RunFolder.h"

namespace jobshop {

/// Loads the plug-ins next to the program, runs the pipeline in its folder, which is the current
/// directory, and prints the summary. Returns the error message when the run failed.
std::optional<std::string> runPipeline(const RunFolder& run);

}  // namespace jobshop
