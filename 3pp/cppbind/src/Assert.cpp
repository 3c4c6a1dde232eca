#include "cppbind/Assert.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace cppbind {

void assertionFailed(const char* expression, const char* file, int line, const char* function) {
  std::fflush(stdout);
  // Uses one write, so that concurrent failures do not mix, and no heap, because memory may be
  // exhausted.
  std::array<char, 8192> text{};
  std::snprintf(text.data(), text.size(), "%s:%d: %s: Assertion `%s' failed.\n", file, line,
                function, expression);
  std::fwrite(text.data(), 1, std::strlen(text.data()), stderr);
  std::abort();
}

}  // namespace cppbind
