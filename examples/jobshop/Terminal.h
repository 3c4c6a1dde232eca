// The terminal that standard error is connected to.
#pragma once

#include <cstddef>

namespace jobshop {

/// Returns the width of the terminal on standard error; 0 when it is not a terminal.
std::size_t terminalColumns();

}  // namespace jobshop
