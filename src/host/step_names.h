// The names of a chain's steps, in UTF-8.
#pragma once

#include <string>

#include "libvarrow/module/Module.h"

namespace libvarrow::host {

/// Throws std::runtime_error, which suggests the nearest name or lists the first ones, when `chain`
/// has no step `step`, "1_ChainedModule/0_Plan". Accepts an empty name, and any step of a module
/// that is not a chain of the library, since such steps are not known.
void requireStep(const Module& chain, const std::string& step);

/// Returns true when `chain` has both steps and `step` ends before `other` begins.
bool isBefore(const Module& chain, const std::string& step, const std::string& other);

}  // namespace libvarrow::host
