// The back-trace that needs nothing of a broken process: addresses, straight to standard error.
#pragma once

namespace libvarrow::crash {

/// Once in a process: the signal, the thread and its call stack. Other threads wait here meanwhile,
/// so that their faults do not end the process before that.
void printRawStackOnce(int sig);

/// The call stack stands on standard error already.
void skipRawStack();

}  // namespace libvarrow::crash
