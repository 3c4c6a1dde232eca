#include "libvarrow/backtrace/Check.h"

#include <boost/assert.hpp>
#include <boost/stacktrace.hpp>
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "backtrace/raw_stack.h"

namespace libvarrow {

void assertionFailed(const char* expression, const char* function, const char* message) {
  std::cout << std::flush;
  std::ostringstream text;
  text << "Expression '" << expression << "' is false in function '" << function
       << "': " << (message != nullptr ? message : "<...>") << ".\n"
       << "Backtrace:\n"
       << boost::stacktrace::stacktrace() << '\n';
  std::cerr << text.str() << std::flush;  // in one piece, as other threads may fail now, too
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
