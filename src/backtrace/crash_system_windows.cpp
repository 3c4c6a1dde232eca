#include <windows.h>

#include <array>
#include <atomic>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstring>

#include "crash_system.h"
#include "libvarrow/backtrace/BackTrace.h"

namespace libvarrow {

namespace {

constexpr DWORD kWatchdogMs = 4000;
constexpr ULONG kStackBytes = 256 * 1024;  // naming frames reads debug information
constexpr DWORD kMaxFrames = 128;
constexpr UINT kAbortExitCode = 3;

std::atomic<bool> watchdogStarted{false};

DWORD WINAPI endHungProcess(void*) {
  Sleep(kWatchdogMs);
  crash::say("the crash handler hangs: ending the process\n");
  TerminateProcess(GetCurrentProcess(), kAbortExitCode);
  return 0;
}

}  // namespace

void useCrashStack() {
  ULONG bytes = kStackBytes;  // left over for handlers when the thread's stack is used up
  SetThreadStackGuarantee(&bytes);
}

namespace crash {

void installSignalHandler(void (*handler)(int)) {
  std::signal(SIGSEGV, handler);
  std::signal(SIGABRT, handler);
}

void startWatchdog() {
  if (watchdogStarted.exchange(true)) return;
  CreateThread(nullptr, 0, endHungProcess, nullptr, 0, nullptr);
}

void printFrames() {
  std::array<void*, kMaxFrames> frames{};
  const USHORT count = CaptureStackBackTrace(0, kMaxFrames, frames.data(), nullptr);
  for (USHORT i = 0; i < count; ++i) {
    std::array<char, 24> line{"0x"};
    char* end = std::to_chars(line.data() + 2, line.data() + line.size() - 2,
                              reinterpret_cast<std::uintptr_t>(frames[i]), 16)
                    .ptr;
    *end = '\n';
    say(line.data());
  }
}

void say(const char* text) {
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(std::strlen(text)), &written,
            nullptr);
}

long threadNumber() {
  return static_cast<long>(GetCurrentThreadId());
}

void rest() {
  Sleep(1);
}

}  // namespace crash

}  // namespace libvarrow
