// Replaces operator new, also for the libraries of this program.
#include <cstdlib>
#include <new>

#include "reliability/failing_new.h"

namespace {

void* orBadAlloc(void* memory) {
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

// The forms for arrays call these.

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return test_support::isAllocationDue() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* operator new(std::size_t size) {
  return orBadAlloc(operator new(size, std::nothrow));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
  const auto boundary = static_cast<std::size_t>(alignment);
  const std::size_t whole = (size + boundary - 1) / boundary * boundary;
  return orBadAlloc(test_support::isAllocationDue() ? nullptr
                                                    : std::aligned_alloc(boundary, whole));
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
