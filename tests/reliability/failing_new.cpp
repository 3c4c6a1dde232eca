#include "reliability/failing_new.h"

#include <cstdlib>
#include <new>

namespace {

// Counted down to 0, which fails. Negative: nothing fails.
thread_local std::int64_t untilFailure = -1;

void* orBadAlloc(void* memory) {
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void failWhenDue() {
  if (untilFailure >= 0 && untilFailure-- == 0) throw std::bad_alloc();
}

}  // namespace

namespace test_support {

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

// The forms for arrays and those that do not throw call these.

void* operator new(std::size_t size) {
  failWhenDue();
  return orBadAlloc(std::malloc(size == 0 ? 1 : size));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
  failWhenDue();
  const auto boundary = static_cast<std::size_t>(alignment);
  return orBadAlloc(std::aligned_alloc(boundary, (size + boundary - 1) / boundary * boundary));
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::align_val_t) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
  std::free(memory);
}
