// The pipeline of a run as JSON, as it was given and with the default of every missing field.
#pragma once

#include <json/value.h>

#include <string>

#include "libvarrow/module/Module.h"

namespace libvarrow::host {

/// Returns the text of a pipeline file, in which each step of the pipeline is on a line of its own.
std::string pipelineText(const Json::Value& pipeline);

struct Configuration {
  std::string json;  ///< the text of a pipeline file, as of pipelineText()
  Json::Value
      seeds;  ///< the fields whose key is "seed" or ends in "_seed" or "Seed": {path, value}
};

/// Returns the configuration of the loaded `chain`: {"modules": [...]}, or {"mainModule": ...} for
/// another module than a ChainedModule. Returns `source`, the pipeline as its file has it, when a
/// module cannot be written as JSON.
Configuration configurationOf(const Module& chain, const Json::Value& source);

}  // namespace libvarrow::host
