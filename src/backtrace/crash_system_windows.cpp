#include <windows.h>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "backtrace/crash_signals.h"
#include "backtrace/crash_system.h"
#include "backtrace/crash_system_windows.h"
#include "backtrace/last_line.h"
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

void (*reportCrash)(int, const void*) = nullptr;
std::atomic<bool> faultsEndTheProcess{false};
LPTOP_LEVEL_EXCEPTION_FILTER filterBefore = nullptr;
// Slots with the two pointers of the thread's last fault. Unlike thread_local they do not allocate.
DWORD faultRecord = TLS_OUT_OF_INDEXES;
DWORD faultContext = TLS_OUT_OF_INDEXES;

std::atomic<bool> watchdogStarted{false};
HANDLE handlerStarted = nullptr;  // an event
std::atomic<HANDLE> handler{nullptr};

bool isFault(const EXCEPTION_RECORD& record) {
  switch (record.ExceptionCode) {
    case EXCEPTION_ACCESS_VIOLATION:
    case EXCEPTION_IN_PAGE_ERROR:
    case EXCEPTION_STACK_OVERFLOW:
      return true;
    default:
      return false;
  }
}

// Runs before all handlers of the program, which may handle the exception: it only notes the place,
// because the C library passes faults on as signals, without it.
LONG CALLBACK noteFault(EXCEPTION_POINTERS* exception) {
  if (!isFault(*exception->ExceptionRecord)) return EXCEPTION_CONTINUE_SEARCH;
  if (crash::endFailedRead(*exception)) return EXCEPTION_CONTINUE_EXECUTION;
  TlsSetValue(faultRecord, exception->ExceptionRecord);
  TlsSetValue(faultContext, exception->ContextRecord);
  return EXCEPTION_CONTINUE_SEARCH;
}

// Returns the fault that the calling function handles as a signal, or null pointers. The system
// puts it onto the stack of the interrupted function, above the frames of the handlers.
EXCEPTION_POINTERS faultOfSignal(int sig) {
  EXCEPTION_POINTERS fault{static_cast<EXCEPTION_RECORD*>(TlsGetValue(faultRecord)),
                           static_cast<CONTEXT*>(TlsGetValue(faultContext))};
  const auto isAbove = [here = reinterpret_cast<std::uintptr_t>(&fault)](const void* object) {
    return reinterpret_cast<std::uintptr_t>(object) > here;
  };
  const bool isThere = sig == SIGSEGV && isAbove(fault.ExceptionRecord) &&
                       isAbove(fault.ContextRecord) && isFault(*fault.ExceptionRecord);
  return isThere ? fault : EXCEPTION_POINTERS{};
}

void onSignal(int sig) {
  const EXCEPTION_POINTERS fault = faultOfSignal(sig);
  reportCrash(sig, fault.ContextRecord == nullptr ? nullptr : &fault);
  std::abort();  // keeps this frame on the stack
}

// Called for faults that nothing else handles, on any thread.
LONG WINAPI onUnhandled(EXCEPTION_POINTERS* exception) {
  if (isFault(*exception->ExceptionRecord)) {
    if (faultsEndTheProcess) TerminateProcess(GetCurrentProcess(), crash::kAbortExitCode);
    reportCrash(SIGSEGV, exception);
  }
  return filterBefore != nullptr ? filterBefore(exception) : EXCEPTION_CONTINUE_SEARCH;
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

DWORD WINAPI endHungProcess(void*) {
  WaitForSingleObject(handlerStarted, INFINITE);
  ULONGLONG before = workOf(handler);
  for (int checks = 0, idle = 0; checks < kMostChecks && idle < kLongestIdleChecks; ++checks) {
    Sleep(kCheckMs);
    const ULONGLONG work = workOf(handler);
    idle = work - before >= kWork ? 0 : idle + 1;
    before = work;
  }
  // Not written by this thread itself: standard error may be the pipe on which the handler hangs.
  const auto report = [](void*) -> DWORD {
    crash::printText("the crash handler hangs: ending the process\n");
    crash::printLastLine();
    return 0;
  };
  if (HANDLE reporter = CreateThread(nullptr, 0, report, nullptr, 0, nullptr)) {
    WaitForSingleObject(reporter, kCheckMs);
  }
  TerminateProcess(GetCurrentProcess(), crash::kAbortExitCode);
  return 0;
}

// A thread that starts after the crash may wait for a lock that the crash left held.
void createWatchdog() {
  static const bool isCreated = [] {
    handlerStarted = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (handlerStarted == nullptr) return false;  // the watchdog would end the process at once
    const HANDLE watchdog = CreateThread(nullptr, 0, endHungProcess, nullptr, 0, nullptr);
    if (watchdog != nullptr) CloseHandle(watchdog);
    return watchdog != nullptr;
  }();
  static_cast<void>(isCreated);
}

}  // namespace

void useCrashStack() {
  ULONG bytes = kStackBytes;  // reserved for handlers after a stack overflow
  SetThreadStackGuarantee(&bytes);
}

namespace crash {

void installSignalHandler(void (*report)(int sig, const void* place)) {
  reportCrash = report;
  faultRecord = TlsAlloc();
  faultContext = TlsAlloc();
  createWatchdog();
  AddVectoredExceptionHandler(/*First=*/1, noteFault);
  filterBefore = SetUnhandledExceptionFilter(onUnhandled);
  for (const CrashSignal& signal : kCrashSignals) std::signal(signal.number, onSignal);
}

void resetSignalHandler(int sig) {
  if (sig == SIGSEGV) faultsEndTheProcess = true;
  std::signal(sig, SIG_DFL);
}

void abortAfter(int sig) {
  // At its end std::abort() would run the destructors of libraries, in a broken process.
  if (sig == SIGABRT) TerminateProcess(GetCurrentProcess(), kAbortExitCode);
  std::abort();
}

void startWatchdog() {
  if (watchdogStarted.exchange(true)) return;
  createWatchdog();
  HANDLE self = nullptr;
  DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &self, 0, FALSE,
                  DUPLICATE_SAME_ACCESS);
  handler = self;
  SetEvent(handlerStarted);
}

void printText(const char* text) {
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(std::strlen(text)), &written,
            nullptr);
}

long threadNumber() {
  return static_cast<long>(GetCurrentThreadId());
}

void sleepBriefly() {
  Sleep(20);
}

}  // namespace crash

}  // namespace libvarrow
