// Runs a program on a terminal.
#pragma once

#include <string>
#include <vector>

namespace jobshop_test {

/// What `program` leaves on a terminal of `columns`, with every character that it sent there.
/// Throws std::runtime_error when it cannot be run or fails.
std::string runOnTerminal(const char* program, std::vector<std::string> arguments,
                          unsigned short columns);

}  // namespace jobshop_test
