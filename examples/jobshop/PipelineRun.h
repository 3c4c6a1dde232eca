// One run of a pipeline, with all that belongs to it.
#pragma once

#include <optional>
#include <string>

#include "RunFolder.h"

namespace jobshop {

/// Loads the plug-ins beside the program, runs the pipeline in its folder, which is the current
/// directory, and prints the summary. Returns what went wrong, if anything did.
std::optional<std::string> runPipeline(const RunFolder& run);

}  // namespace jobshop
