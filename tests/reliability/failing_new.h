// An allocation that fails. A program that links failing_new.cpp and the file of its system
// replaces operator new, also for the libraries that it loads.
#pragma once

#include <cstdint>
#include <functional>

namespace test_support {

/// Calls `attempt` repeatedly: in the n-th call, the n-th allocation of this thread fails. Ends
/// with the first call that needs fewer allocations. `check(isDone)` follows each call, without a
/// fault; `isDone` is false when the call threw std::bad_alloc. Returns the number of failed
/// allocations.
std::uint64_t failEachAllocation(const std::function<void()>& attempt,
                                 const std::function<void(bool)>& check);

/// Returns whether the allocation that begins now fails.
bool isAllocationDue();

}  // namespace test_support
