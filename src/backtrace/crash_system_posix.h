// Functions that the two files of the crash system for POSIX share.
#pragma once

#include <signal.h>
#include <ucontext.h>

namespace libvarrow::crash {

/// Returns an action that calls `handler`, on the thread's crash stack if there is one.
struct sigaction actionOf(void (*handler)(int));

/// Returns whether `info` and `place` are the readable objects that the system passed to a handler
/// of `sig` on this stack.
bool isDeliveryOf(int sig, const siginfo_t* info, const void* place);

/// Undoes a call of an address without code: changes `place`, the context that `sig` interrupted,
/// as if that call had just returned, because no unwinder continues from such an address. Leaves
/// `place` unchanged when no such call was made or its return address is not readable.
void undoCallWithoutCode(int sig, const siginfo_t& info, ucontext_t& place);

}  // namespace libvarrow::crash
