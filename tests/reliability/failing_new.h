// Memory that runs out at a chosen allocation. The program that links failing_new.cpp replaces
// operator new, and with it that of the libraries it loads.
#pragma once

#include <cstdint>
#include <functional>

namespace test_support {

/// Calls `attempt` again and again, in which first the first allocation of this thread fails, then
/// the second and so on, until one call needs no more. `check(isDone)` follows each call, with
/// memory enough; `isDone` is false when std::bad_alloc left the call. Returns how many failed.
std::uint64_t failEachAllocation(const std::function<void()>& attempt,
                                 const std::function<void(bool)>& check);

}  // namespace test_support
