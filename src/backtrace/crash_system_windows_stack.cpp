// Reads the call stack of a broken process as far as possible.
#include <windows.h>

// clang-format off: these need windows.h
#include <dbghelp.h>
#include <psapi.h>
// clang-format on

#include <array>
#include <atomic>
#include <boost/config.hpp>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <cwchar>

#include "backtrace/crash_system.h"
#include "backtrace/crash_system_windows.h"

namespace libvarrow::crash {

namespace {

std::atomic<DWORD> reader{0};  // the thread that reads possibly unreadable memory
std::atomic<bool> hasFailed{false};
CONTEXT beforeRead;

// Calls `read`, which has nothing to destroy. Returns false when it met unreadable memory: a jump
// back is the only way out of a fault inside the unwinder.
template <class Read>
BOOST_NOINLINE bool mayRead(const Read& read) {
  for (DWORD none = 0; !reader.compare_exchange_weak(none, GetCurrentThreadId()); none = 0)
    sleepBriefly();
  hasFailed = false;
  RtlCaptureContext(&beforeRead);  // a failed read continues here
  if (!hasFailed) read();
  reader = 0;
  return !hasFailed;
}

const CONTEXT* contextOf(const void* place) {
  return place == nullptr ? nullptr : static_cast<const EXCEPTION_POINTERS*>(place)->ContextRecord;
}

// Changes `context` to that of the calling function.
void unwind(CONTEXT& context) {
  DWORD64 image = 0;
  RUNTIME_FUNCTION* const function = RtlLookupFunctionEntry(context.Rip, &image, nullptr);
  if (function == nullptr) {  // without a frame, or without code
    std::memcpy(&context.Rip, reinterpret_cast<const void*>(context.Rsp), sizeof context.Rip);
    context.Rsp += sizeof context.Rip;
    return;
  }
  void* handlerData = nullptr;
  DWORD64 frame = 0;
  RtlVirtualUnwind(UNW_FLAG_NHANDLER, image, context.Rip, function, &context, &handlerData, &frame,
                   nullptr);
}

void readFrom(CONTEXT& context, Stack& stack) {
  const std::size_t most = stack.frames.size() - 1;
  while (context.Rip != 0 && stack.count < most) {
    stack.frames[stack.count++] = reinterpret_cast<void*>(context.Rip);
    unwind(context);
  }
}

bool isCode(const void* address) {
  constexpr DWORD kCode =
      PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
  MEMORY_BASIC_INFORMATION memory{};
  return VirtualQuery(address, &memory, sizeof memory) != 0 && (memory.Protect & kCode) != 0;
}

void sayHex(std::uintptr_t number) {
  std::array<char, 20> text{"0x"};
  std::to_chars(text.data() + 2, text.data() + text.size() - 1, number, 16);
  printText(text.data());
}

// Writes the file name of the module at `base` without asking the loader, whose lock may be held.
void sayModule(void* base) {
  constexpr DWORD kMostCharacters = 1024;
  static std::array<wchar_t, kMostCharacters> path;
  static std::array<char, 2 * kMostCharacters> name;  // code pages use up to 2 bytes
  const DWORD length =
      K32GetMappedFileNameW(GetCurrentProcess(), base, path.data(), kMostCharacters - 1);
  path[length] = L'\0';
  // In wide characters, since a byte of a character may be that of a backslash.
  const wchar_t* const slash = std::wcsrchr(path.data(), L'\\');
  WideCharToMultiByte(CP_ACP, 0, slash == nullptr ? path.data() : slash + 1, -1, name.data(),
                      static_cast<int>(name.size()) - 1, nullptr, nullptr);
  printText(name.data());
}

// Writes "FILE(+OFFSET) [ADDRESS]".
void sayFrame(const void* address) {
  MEMORY_BASIC_INFORMATION memory{};
  const bool isImage =
      VirtualQuery(address, &memory, sizeof memory) != 0 && memory.Type == MEM_IMAGE;
  if (isImage) {
    sayModule(memory.AllocationBase);
    printText("(+");
    sayHex(reinterpret_cast<std::uintptr_t>(address) -
           reinterpret_cast<std::uintptr_t>(memory.AllocationBase));
    printText(") ");
  }
  printText("[");
  sayHex(reinterpret_cast<std::uintptr_t>(address));
  printText("]\n");
}

void printRegister(const char* name, DWORD64 value) {
  printText(name);
  printText(" ");
  sayHex(value);
  printText("\n");
}

}  // namespace

bool endFailedRead(const EXCEPTION_POINTERS& exception) {
  if (reader != GetCurrentThreadId()) return false;
  hasFailed = true;
  *exception.ContextRecord = beforeRead;
  return true;
}

// Not inlined, because the first frame is that of the caller.
BOOST_NOINLINE void readStack(Stack& stack, const void* place) {
  constexpr DWORD kOwnFrame = 1;
  constexpr std::size_t kCallersFrames = 2;  // the system's own are part of its C library
  if (place == nullptr) {
    stack.handlerFrames = kCallersFrames;
    stack.count = CaptureStackBackTrace(kOwnFrame, static_cast<DWORD>(stack.frames.size() - 1),
                                        stack.frames.data(), nullptr);
    return;
  }
  CONTEXT context = *contextOf(place);
  const auto interrupted = reinterpret_cast<void*>(context.Rip);
  stack.isWhole = mayRead([&] { readFrom(context, stack); });
  if (isCode(interrupted) || stack.count < 2 || !isCode(stack.frames[1])) return;
  printText("no code at ");
  sayHex(reinterpret_cast<std::uintptr_t>(interrupted));
  printText(": the call stack begins with the call\n");
  stack.handlerFrames = 1;
}

void printFrames(const Stack& stack) {
  for (std::size_t i = stack.handlerFrames; i < stack.count; ++i) sayFrame(stack.frames[i]);
}

void writeDumpFile(const char* fileName, const void* place) {
  const HANDLE file = CreateFileA(fileName, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  MINIDUMP_EXCEPTION_INFORMATION exception{};
  exception.ThreadId = GetCurrentThreadId();
  exception.ExceptionPointers = static_cast<EXCEPTION_POINTERS*>(const_cast<void*>(place));
  MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), file, MiniDumpNormal,
                    place == nullptr ? nullptr : &exception, nullptr, nullptr);
  CloseHandle(file);
}

void printRegisters(const void* place) {
  const CONTEXT* const context = contextOf(place);
  if (context == nullptr) return;
  const auto& c = *context;
  const struct {
    const char* name;
    DWORD64 value;
  } registers[] = {{"r8", c.R8},   {"r9", c.R9},   {"r10", c.R10}, {"r11", c.R11}, {"r12", c.R12},
                   {"r13", c.R13}, {"r14", c.R14}, {"r15", c.R15}, {"rdi", c.Rdi}, {"rsi", c.Rsi},
                   {"rbp", c.Rbp}, {"rbx", c.Rbx}, {"rdx", c.Rdx}, {"rax", c.Rax}, {"rcx", c.Rcx},
                   {"rsp", c.Rsp}, {"rip", c.Rip}};
  for (const auto& [name, value] : registers) printRegister(name, value);
}

}  // namespace libvarrow::crash
