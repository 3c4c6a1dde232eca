// Memory that runs out at a chosen allocation. The program that links failing_new.cpp replaces
// operator new, and with it that of the libraries it loads.
#pragma once

#include <cstdint>
#include <new>

namespace test_support {

/// While it lives, one allocation of the thread that made it throws std::bad_alloc: the first for
/// `nth` of 0. Those before and after it succeed. Only one may live in a thread.
class FailingNew {
 public:
  explicit FailingNew(std::uint64_t nth);
  ~FailingNew();
  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;

  /// Returns whether that allocation was reached, even if its exception was caught inside.
  bool hasFailed() const;
};

/// Calls `attempt` again and again, in which first the first allocation fails, then the second and
/// so on, until one call needs no more. `check(isDone)` follows each call, with memory enough;
/// `isDone` is false when std::bad_alloc left the call. Returns how many allocations failed.
template <class Attempt, class Check>
std::uint64_t failEachAllocation(Attempt attempt, Check check) {
  for (std::uint64_t nth = 0;; ++nth) {
    bool isDone = true;
    bool hasFailed = false;
    {
      const FailingNew failing(nth);
      try {
        attempt();
      } catch (const std::bad_alloc&) {
        isDone = false;
      }
      hasFailed = failing.hasFailed();
    }
    check(isDone);
    if (!hasFailed) return nth;
  }
}

}  // namespace test_support
