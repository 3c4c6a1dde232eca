// Exceptions that say that memory ran out.
#pragma once

#include <exception>

namespace libvarrow::base {

/// Returns whether `error` is a std::bad_alloc, or the runtime error that the JSON library throws
/// in its place.
bool isOutOfMemory(const std::exception& error);

}  // namespace libvarrow::base
