#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>

#include "support/environment.h"

namespace test_support {

// A variable with an empty value exists for the system, but not for the C library.
void setVariable(const char* name, const std::string& value) {
  ::_putenv_s(name, value.c_str());
  SetEnvironmentVariableA(name, value.c_str());
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
