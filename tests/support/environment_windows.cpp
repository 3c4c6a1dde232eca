#include <malloc.h>
#include <windows.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fstream>

#include "support/environment.h"

namespace test_support {

// The C library removes a variable with an empty value.
void setVariable(const char* name, const std::string& value) {
  ::_putenv_s(name, value.empty() ? " " : value.c_str());
}

void unsetVariable(const char* name) {
  ::_putenv_s(name, "");
}

void readTimeZone() {
  ::_tzset();
}

bool isLibraryLoaded(const std::string& path) {
  std::string name = path;
  std::replace(name.begin(), name.end(), '/', '\\');
  return GetModuleHandleA(name.c_str()) != nullptr;
}

bool framesHaveNames() {
  return false;
}

void endQuickly() {
  std::_Exit(0);
}

void killThisProcess() {
  TerminateProcess(GetCurrentProcess(), 128 + kKillSignal);
  std::abort();
}

std::chrono::nanoseconds processorTime() {
  FILETIME begin{}, end{}, times[2]{};
  GetProcessTimes(GetCurrentProcess(), &begin, &end, &times[0], &times[1]);
  std::int64_t ticks = 0;  // of 100 ns
  for (const FILETIME& time : times) {
    ticks += (std::int64_t{time.dwHighDateTime} << 32) + time.dwLowDateTime;
  }
  return std::chrono::nanoseconds(100 * ticks);
}

bool haveSameHandler(int one, int other) {
  const auto handlerOf = [](int sig) {
    const auto handler = std::signal(sig, SIG_DFL);
    if (handler != SIG_ERR) std::signal(sig, handler);
    return handler;
  };
  return handlerOf(one) == handlerOf(other);
}

std::string signalName(int sig) {
  return sig == SIGABRT ? "ABRT" : sig == SIGSEGV ? "SEGV" : std::to_string(sig);
}

std::string pathOfText(const std::string& text) {
  std::ofstream("text") << text;
  return "text";
}

std::size_t heapBytes() {
  const auto heap = reinterpret_cast<HANDLE>(::_get_heap_handle());
  std::size_t bytes = 0;
  HeapLock(heap);
  for (PROCESS_HEAP_ENTRY entry{}; HeapWalk(heap, &entry);) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
  }
  HeapUnlock(heap);
  return bytes;
}

std::size_t openObjects() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

void limitProcessorTime(unsigned seconds) {
  constexpr LONGLONG kTicks = 10000000;  // of 100 ns in a second
  JOBOBJECT_BASIC_LIMIT_INFORMATION limit{};
  limit.LimitFlags = JOB_OBJECT_LIMIT_PROCESS_TIME;
  limit.PerProcessUserTimeLimit.QuadPart = seconds * kTicks;
  const HANDLE job = CreateJobObjectW(nullptr, nullptr);
  SetInformationJobObject(job, JobObjectBasicLimitInformation, &limit, sizeof limit);
  AssignProcessToJobObject(job, GetCurrentProcess());
}

}  // namespace test_support
