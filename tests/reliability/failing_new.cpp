#include "reliability/failing_new.h"

#include <cstdlib>
#include <new>

namespace {

// The number of allocations before the one that fails; negative: none fails.
thread_local std::int64_t untilFailure = -1;

bool isDue() {
  return untilFailure >= 0 && untilFailure-- == 0;
}

void* orBadAlloc(void* memory) {
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
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

// The forms for arrays call these.

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return isDue() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* operator new(std::size_t size) {
  return orBadAlloc(operator new(size, std::nothrow));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
  const auto boundary = static_cast<std::size_t>(alignment);
  const std::size_t whole = (size + boundary - 1) / boundary * boundary;
  return orBadAlloc(isDue() ? nullptr : std::aligned_alloc(boundary, whole));
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
