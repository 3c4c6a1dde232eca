#include "support/environment.h"

#include <dlfcn.h>
#include <sys/resource.h>

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

bool isLibraryLoaded(const std::string& path) {
  void* const library = ::dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (library != nullptr) ::dlclose(library);
  return library != nullptr;
}

bool framesHaveNames() {
  return true;
}

void endQuickly() {
  std::quick_exit(0);
}

void limitProcessorTime(unsigned seconds) {
  const rlimit limit{seconds, seconds + 1};
  ::setrlimit(RLIMIT_CPU, &limit);
}

}  // namespace test_support
