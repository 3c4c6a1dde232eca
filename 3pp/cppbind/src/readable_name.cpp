#include "readable_name.h"

#include <boost/core/demangle.hpp>
#include <new>
#include <string_view>

namespace cppbind {

namespace {

// Removes a keyword that Visual C++ writes before the names of types, also in arguments of
// templates. Its names need no demangling; other compilers write no keywords.
void removeKeyword(std::string& name, std::string_view keyword) {
  constexpr std::string_view kBeforeAName = "<,(` ";
  std::size_t found = 0;
  while ((found = name.find(keyword, found)) != std::string::npos) {
    if (found == 0 || kBeforeAName.find(name[found - 1]) != std::string_view::npos) {
      name.erase(found, keyword.size());
    } else {
      found += keyword.size();  // the end of a longer word
    }
  }
}

}  // namespace

std::string readableName(const char* name) {
  const boost::core::scoped_demangled_name demangled(name);
  // The pointer is null only if memory is exhausted. Reports must not contain the mangled name
  // instead.
  if (demangled.get() == nullptr) throw std::bad_alloc();
  std::string readable = demangled.get();
  if (demangled.get() != name) return readable;
  for (const char* keyword : {"class ", "struct ", "union ", "enum "}) {
    removeKeyword(readable, keyword);
  }
  return readable;
}

}  // namespace cppbind
