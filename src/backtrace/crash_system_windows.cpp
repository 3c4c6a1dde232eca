#include <windows.h>

#include <array>
#include <atomic>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "backtrace/crash_signals.h"
#include "backtrace/crash_system.h"
#include "libvarrow/backtrace/BackTrace.h"

namespace libvarrow {

namespace {

constexpr DWORD kCheckMs = 1000;
constexpr int kLongestIdleChecks = 4;
constexpr int kMostChecks = 60;
// More processor time than a waiting handler uses in a second, less than a working one on a busy
// machine.
constexpr ULONGLONG kWork = 50000;         // 5 ms, in units of 100 ns
constexpr ULONG kStackBytes = 256 * 1024;  // naming frames reads debug information
constexpr UINT kAbortExitCode = 3;

std::atomic<bool> watchdogStarted{false};
void (*reportCrash)(int, const void*) = nullptr;

void onSignal(int sig) {
  reportCrash(sig, nullptr);
  std::abort();  // keeps this frame on the stack
}

// Returns the processor time that `thread` has used.
ULONGLONG workOf(HANDLE thread) {
  FILETIME begin{}, end{}, kernel{}, user{};
  if (!GetThreadTimes(thread, &begin, &end, &kernel, &user)) return 0;
  const auto number = [](const FILETIME& time) {
    return (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
  };
  return number(kernel) + number(user);
}

DWORD WINAPI endHungProcess(void* handler) {
  ULONGLONG before = workOf(handler);
  for (int checks = 0, idle = 0; checks < kMostChecks && idle < kLongestIdleChecks; ++checks) {
    Sleep(kCheckMs);
    const ULONGLONG work = workOf(handler);
    idle = work - before >= kWork ? 0 : idle + 1;
    before = work;
  }
  crash::printText("the crash handler hangs: ending the process\n");
  TerminateProcess(GetCurrentProcess(), kAbortExitCode);
  return 0;
}

}  // namespace

void useCrashStack() {
  ULONG bytes = kStackBytes;  // reserved for handlers after a stack overflow
  SetThreadStackGuarantee(&bytes);
}

namespace crash {

void installSignalHandler(void (*report)(int sig, const void* place)) {
  reportCrash = report;
  for (const CrashSignal& signal : kCrashSignals) std::signal(signal.number, onSignal);
}

void startWatchdog() {
  if (watchdogStarted.exchange(true)) return;
  HANDLE handler = nullptr;
  DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &handler, 0, FALSE,
                  DUPLICATE_SAME_ACCESS);
  CreateThread(nullptr, 0, endHungProcess, handler, 0, nullptr);
}

void readStack(Stack& stack) {
  constexpr DWORD kOwnFrame = 1;
  stack.count = CaptureStackBackTrace(kOwnFrame, static_cast<DWORD>(stack.frames.size() - 1),
                                      stack.frames.data(), nullptr);
}

void printFrames(const Stack& stack) {
  for (std::size_t i = kHandlerFrames; i < stack.count; ++i) {
    std::array<char, 24> line{"0x"};
    char* end = std::to_chars(line.data() + 2, line.data() + line.size() - 2,
                              reinterpret_cast<std::uintptr_t>(stack.frames[i]), 16)
                    .ptr;
    *end = '\n';
    printText(line.data());
  }
}

void printRegisters(const void*) {}

void printText(const char* text) {
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(std::strlen(text)), &written,
            nullptr);
}

long threadNumber() {
  return static_cast<long>(GetCurrentThreadId());
}

void sleepBriefly() {
  Sleep(1);
}

}  // namespace crash

}  // namespace libvarrow
