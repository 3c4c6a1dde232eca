// Call stacks as text.
#pragma once

#include <boost/stacktrace/stacktrace.hpp>
#include <string>

namespace libvarrow {

/// The address of the innermost frame: the one that its call returns to, or that of an instruction
/// that a signal interrupted.
enum class Innermost { Calls, IsInterrupted };

/// Returns `stack` as lines "N# FUNCTION at FILE:LINE". Each line number is that of the call.
/// Throws std::bad_alloc.
std::string stackText(const boost::stacktrace::stacktrace& stack,
                      Innermost innermost = Innermost::Calls);

}  // namespace libvarrow
