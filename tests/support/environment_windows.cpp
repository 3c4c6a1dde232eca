#include <windows.h>

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

}  // namespace test_support
