// Names of types for reports.
#pragma once

#include <string>

namespace cppbind {

/// Returns the readable form of the name of a std::type_info. Throws std::bad_alloc.
std::string readableName(const char* name);

}  // namespace cppbind
