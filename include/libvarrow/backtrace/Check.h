// The checked assertion: always on, reported with a back-trace.
#pragma once

#include <boost/current_function.hpp>

#include "libvarrow/Export.h"

namespace libvarrow {

/// The handler of every checked assertion and of Boost's own (varrow::varrow defines
/// BOOST_ENABLE_ASSERT_HANDLER for hosts, too, which must not define a handler of their own).
/// Writes "Expression 'EXPRESSION' is false in function 'FUNCTION': MESSAGE." ("<...>" when
/// `message` is null) and the call stack to standard error, in one piece, and aborts.
[[noreturn]] LIBVARROW_API void assertionFailed(const char* expression, const char* function,
                                                const char* message = nullptr);

}  // namespace libvarrow

/// Ends the process with expression, function and back-trace when `expression` is false.
#define LIBVARROW_CHECK(expression) \
  (static_cast<bool>(expression)    \
       ? static_cast<void>(0)       \
       : ::libvarrow::assertionFailed(#expression, BOOST_CURRENT_FUNCTION))
