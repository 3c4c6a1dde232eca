// The assertion macro: enabled in every build, also with NDEBUG.
#pragma once

#include <boost/current_function.hpp>

#include "cppbind/Export.h"

namespace cppbind {

/// Prints "FILE:LINE: FUNCTION: Assertion `EXPRESSION' failed." to standard error and aborts.
[[noreturn]] CPPBIND_API void assertionFailed(const char* expression, const char* file, int line,
                                              const char* function);

}  // namespace cppbind

/// Aborts, with expression, file, line and function on standard error, when `expression` is false.
#define CPPBIND_ASSERT(expression) \
  (static_cast<bool>(expression)   \
       ? static_cast<void>(0)      \
       : ::cppbind::assertionFailed(#expression, __FILE__, __LINE__, BOOST_CURRENT_FUNCTION))
