// What standard error is connected to.
#pragma once

#include <cstddef>

namespace jobshop {

/// How wide the terminal is that standard error goes to; 0 when that is no terminal.
std::size_t terminalColumns();

}  // namespace jobshop
