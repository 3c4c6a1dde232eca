#include "base/out_of_memory.h"

#include <json/value.h>

#include <cstring>
#include <new>

namespace libvarrow::base {

bool isOutOfMemory(const std::exception& error) {
  if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) return true;
  return dynamic_cast<const Json::Exception*>(&error) != nullptr &&
         std::strstr(error.what(), "Failed to allocate") != nullptr;
}

}  // namespace libvarrow::base
