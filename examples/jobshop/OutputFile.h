// The files that a run writes.
#pragma once

#include <string>

#include "JobShopData.h"

namespace jobshop {

/// Writes `text` to `path`. Throws std::runtime_error when the file cannot be written.
void writeText(const std::string& path, const std::string& text);

/// Writes `text` to `path`, which starts from the run's folder unless absolute, and records the
/// file of the run under `kind`. Throws std::runtime_error when the file cannot be written.
void writeOutput(const JobShopData& shop, const char* kind, const std::string& path,
                 const std::string& text);

}  // namespace jobshop
