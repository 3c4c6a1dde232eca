// Preloaded, lets the programs of a build tree start in the locale of the environment, as hosts
// may.
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <locale>
#include <string_view>

namespace {

// Not ctest, the shells and the compilers around them, which write files of their own.
[[gnu::constructor]] void adoptLocale() {
  const char* tree = ::getenv("VARROW_ADOPT_LOCALE");
  std::array<char, 4096> path = {};
  const auto length = ::readlink("/proc/self/exe", path.data(), path.size());
  if (tree == nullptr || length < 0) return;
  if (std::string_view(path.data(), static_cast<std::size_t>(length)).rfind(tree, 0) == 0) {
    std::locale::global(std::locale(""));
  }
}

}  // namespace
