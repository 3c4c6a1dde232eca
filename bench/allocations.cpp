// Counts the calls of operator new, also those of the shared library: the program's replacement
// serves the libraries that it loads too.
#include "allocations.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::uint64_t calls = 0;

void* counted(void* memory) {
  ++calls;
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

namespace bench {

std::uint64_t allocationCount() {
  return calls;
}

}  // namespace bench

// The array forms call these.

void* operator new(std::size_t size) {
  return counted(std::malloc(size == 0 ? 1 : size));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
  const auto boundary = static_cast<std::size_t>(alignment);
  return counted(std::aligned_alloc(boundary, (size + boundary - 1) / boundary * boundary));
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
