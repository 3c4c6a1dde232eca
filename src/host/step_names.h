// The names of a chain's steps.
#pragma once

#include <string>

#include "libvarrow/module/Module.h"

namespace libvarrow::host {

/// Throws std::runtime_error, which suggests the nearest name, when `chain` has no step `step`,
/// "1_ChainedModule/0_Plan". Accepts an empty name, and any step of a module that is not a chain of
/// the library, since such steps are not known.
void requireStep(Module& chain, const std::string& step);

}  // namespace libvarrow::host
