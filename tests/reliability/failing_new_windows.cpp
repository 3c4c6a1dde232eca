// Replaces the allocator of the standard library, whose operator new all DLLs call.
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

#include "reliability/failing_new.h"

namespace {

// Returns whether Boost.Filesystem allocates: it does so also in functions that may not throw.
bool isForFiles() {
  static const HMODULE files = GetModuleHandleA("libboost_filesystem.dll");
  std::array<void*, 16> frames{};
  const auto end =
      frames.begin() + RtlCaptureStackBackTrace(0, frames.size(), frames.data(), nullptr);
  return std::any_of(frames.begin(), end, [](void* frame) {
    void* module = nullptr;
    return RtlPcToFileHeader(frame, &module) == files;
  });
}

void* failingMalloc(std::size_t size) {
  return !isForFiles() && test_support::isAllocationDue() ? nullptr : std::malloc(size);
}

// Replaces malloc in the import address table of a library.
bool replaceMalloc(const char* library) {
  auto* const image = reinterpret_cast<char*>(GetModuleHandleA(library));
  const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
  const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dos->e_lfanew);
  const auto& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
  auto* const imports = reinterpret_cast<std::uintptr_t*>(image + table.VirtualAddress);
  const auto real =
      reinterpret_cast<std::uintptr_t>(GetProcAddress(GetModuleHandleA("msvcrt.dll"), "malloc"));
  for (auto* import = imports; import < imports + table.Size / sizeof *import; ++import) {
    if (*import != real) continue;
    DWORD protection = 0;
    VirtualProtect(import, sizeof *import, PAGE_READWRITE, &protection);
    *import = reinterpret_cast<std::uintptr_t>(failingMalloc);
    return true;
  }
  return false;
}

const bool isReplaced = replaceMalloc("libstdc++-6.dll");

}  // namespace
