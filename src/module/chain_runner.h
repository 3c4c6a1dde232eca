// Runs one module of a chain, for both kinds of chain.
#pragma once

#include <cstddef>
#include <string>

#include "libvarrow/module/Module.h"

namespace libvarrow {

/// Runs `module`, the one at `index`, in a separate directory below `chainPath`, unless the
/// observer skips it. Then sets the data's dump path to `chainPath` again.
void runChainedStep(Module& module, std::size_t index, const std::string& chainPath,
                    ModuleData& data);

}  // namespace libvarrow
