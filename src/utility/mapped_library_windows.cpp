#include <windows.h>

#include <boost/filesystem/path.hpp>

#include "utility/mapped_library.h"

namespace libvarrow {

bool isMapped(const std::string& path) {
  return GetModuleHandleW(boost::filesystem::path(path).make_preferred().c_str()) != nullptr;
}

}  // namespace libvarrow
