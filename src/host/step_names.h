// The names of a chain's steps.
#pragma once

#include <string>

#include "libvarrow/module/Module.h"

namespace libvarrow::host {

/// Throws std::runtime_error, with the nearest name, when `chain` has no step `step`,
/// "1_ChainedModule/0_Plan". Empty: any chain fits. Steps of modules that are chains of the host's
/// own kind are not known and fit.
void requireStep(Module& chain, const std::string& step);

}  // namespace libvarrow::host
