#include "libvarrow/backtrace/Check.h"

#include <boost/assert.hpp>
#include <boost/stacktrace.hpp>
#include <cstdlib>
#include <iostream>

#include "raw_stack.h"

namespace libvarrow {

void assertionFailed(const char* expression, const char* function, const char* message) {
  std::cout << std::flush;
  std::cerr << "Expression '" << expression << "' is false in function '" << function
            << "': " << (message != nullptr ? message : "<...>") << ".\n"
            << "Backtrace:\n"
            << boost::stacktrace::stacktrace() << std::endl;
  crash::skipRawStack();
  std::abort();
}

}  // namespace libvarrow

namespace boost {

LIBVARROW_API void assertion_failed(const char* expression, const char* function, const char*,
                                    long) {
  libvarrow::assertionFailed(expression, function);
}

LIBVARROW_API void assertion_failed_msg(const char* expression, const char* message,
                                        const char* function, const char*, long) {
  libvarrow::assertionFailed(expression, function, message);
}

}  // namespace boost
