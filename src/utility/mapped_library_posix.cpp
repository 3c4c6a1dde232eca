#include <dlfcn.h>

#include "utility/mapped_library.h"

namespace libvarrow {

bool isMapped(const std::string& path) {
  void* const library = ::dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) return false;
  ::dlclose(library);
  return true;
}

}  // namespace libvarrow
