// The pipeline of a run with the default of every missing field.
#pragma once

#include <json/value.h>

#include "libvarrow/module/Module.h"

namespace libvarrow::host {

/// Returns the loaded `chain` as a pipeline file that has every field: {"modules": [...]}, or
/// {"mainModule": ...} for another module than a ChainedModule. Returns null when a module cannot
/// be written as JSON.
Json::Value configurationOf(const Module& chain);

/// Returns the seeds in a pipeline as a list of {path, value}: the fields whose key is "seed" or
/// ends in "_seed" or "Seed".
Json::Value seedsOf(const Json::Value& pipeline);

}  // namespace libvarrow::host
