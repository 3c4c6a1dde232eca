#include "support/environment.h"

#include <cstdlib>
#include <ctime>

namespace test_support {

void setVariable(const char* name, const std::string& value) {
  ::setenv(name, value.c_str(), 1);
}

void unsetVariable(const char* name) {
  ::unsetenv(name);
}

void readTimeZone() {
  ::tzset();
}

}  // namespace test_support
