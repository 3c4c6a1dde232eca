// The checked assertion: always enabled, reported with a back-trace.
#pragma once

#include <boost/current_function.hpp>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Writes "Expression 'EXPRESSION' is false in function 'FUNCTION': MESSAGE." ("<...>" when
/// `message` is null) and the call stack to standard error, in one piece, and aborts. Handles every
/// checked assertion and Boost's own: varrow::varrow defines BOOST_ENABLE_ASSERT_HANDLER for hosts
/// too, so a host must not define its own handler.
[[noreturn]] LIBVARROW_API void assertionFailed(const char* expression, const char* function,
                                                const char* message = nullptr);

}  // namespace libvarrow

/// Aborts with expression, function and back-trace when `expression` is false.
#define LIBVARROW_CHECK(expression) \
  (static_cast<bool>(expression)    \
       ? static_cast<void>(0)       \
       : ::libvarrow::assertionFailed(#expression, BOOST_CURRENT_FUNCTION))
