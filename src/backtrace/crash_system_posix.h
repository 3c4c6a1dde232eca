// What the two parts of the crash system for POSIX share.
#pragma once

#include <signal.h>
#include <ucontext.h>

namespace libvarrow::crash {

/// Calls `handler` on the thread's crash stack where it has one.
struct sigaction actionOf(void (*handler)(int));

/// Returns whether `info` and `place` are those that the system gave a handler of `sig` on this
/// stack, and may be read.
bool isDeliveryOf(int sig, const siginfo_t* info, const void* place);

/// Makes `place`, where `sig` interrupted a thread, look as if a call had just returned when the
/// processor was sent to an address that holds no code: no unwinder gets any further from there.
/// Leaves it as it is when there is no readable address to return to.
void takeBackCallOfNoCode(int sig, const siginfo_t& info, ucontext_t& place);

}  // namespace libvarrow::crash
