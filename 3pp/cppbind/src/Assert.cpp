#include "cppbind/Assert.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace cppbind {

void assertionFailed(const char* expression, const char* file, int line, const char* function) {
  std::fflush(stdout);
  // In one piece, as other threads may fail now, too.
  const std::string text = std::string(file) + ':' + std::to_string(line) + ": " + function +
                           ": Assertion `" + expression + "' failed.\n";
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::abort();
}

}  // namespace cppbind
