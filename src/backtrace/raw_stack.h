// The back-trace that needs nothing of a broken process: addresses, straight to standard error.
#pragma once

namespace libvarrow::crash {

struct Stack;

/// Writes the signal, the thread and its call stack, once in a process; of a stack that cannot be
/// read whole, the registers at `place`, too. Other threads wait here meanwhile, so that their
/// faults do not end the process before that.
void printRawStackOnce(int sig, const Stack& stack, const void* place);

/// The call stack is on standard error already.
void skipRawStack();

}  // namespace libvarrow::crash
