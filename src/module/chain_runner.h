// What both kinds of chain do for one module.
#pragma once

#include <cstddef>
#include <string>

#include "libvarrow/module/Module.h"

namespace libvarrow {

/// Runs `module`, the one at `index`, in its own directory below `chainPath`, and gives the data
/// that path back.
void runChainedStep(Module& module, std::size_t index, const std::string& chainPath,
                    ModuleData& data);

}  // namespace libvarrow
