// The raw back-trace: writes addresses directly to standard error and needs nothing of a broken
// process.
#pragma once

namespace libvarrow::crash {

struct Stack;

/// Writes the signal, the thread and its call stack, once per process; also the registers at
/// `place` when the stack cannot be read completely. Other threads wait here meanwhile, so that
/// their faults do not end the process first.
void printRawStackOnce(int sig, const Stack& stack, const void* place);

/// Suppresses the raw back-trace, because the call stack is on standard error already.
void skipRawStack();

}  // namespace libvarrow::crash
