#include "reliability/failing_new.h"

#include <new>

namespace {

// The number of allocations before the one that fails; negative: none fails.
thread_local std::int64_t untilFailure = -1;

}  // namespace

namespace test_support {

bool isAllocationDue() {
  return untilFailure >= 0 && untilFailure-- == 0;
}

std::uint64_t failEachAllocation(const std::function<void()>& attempt,
                                 const std::function<void(bool)>& check) {
  for (std::uint64_t nth = 0;; ++nth) {
    bool isDone = true;
    untilFailure = static_cast<std::int64_t>(nth);
    try {
      attempt();
    } catch (const std::bad_alloc&) {
      isDone = false;
    }
    const bool hasFailed = untilFailure < 0;
    untilFailure = -1;
    check(isDone);
    if (!hasFailed) return nth;
  }
}

}  // namespace test_support
