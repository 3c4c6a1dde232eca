#include "cppbind/Assert.h"

#include <cstdio>
#include <cstdlib>

namespace cppbind {

void assertionFailed(const char* expression, const char* file, int line, const char* function) {
  std::fflush(stdout);
  std::fprintf(stderr, "%s:%d: %s: Assertion `%s' failed.\n", file, line, function, expression);
  std::abort();
}

}  // namespace cppbind
