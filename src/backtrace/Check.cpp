#include "libvarrow/backtrace/Check.h"

// Visual C++ refuses an export that the first declaration lacks, as those of Boost do.
namespace boost {
LIBVARROW_API void assertion_failed(const char* expression, const char* function, const char* file,
                                    long line);
LIBVARROW_API void assertion_failed_msg(const char* expression, const char* message,
                                        const char* function, const char* file, long line);
}  // namespace boost

#include <array>
#include <boost/assert.hpp>
#include <boost/stacktrace.hpp>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include "backtrace/crash_system.h"
#include "backtrace/last_line.h"
#include "backtrace/raw_stack.h"
#include "backtrace/stack_text.h"

namespace libvarrow {

void assertionFailed(const char* expression, const char* function, const char* message) {
  crash::startWatchdog();  // standard output and error may be pipes that nobody reads
  std::cout << std::flush;
  std::array<char, 8192> text{};
  std::snprintf(text.data(), text.size(),
                "Expression '%s' is false in function '%s': %s.\nBacktrace:\n", expression,
                function, message != nullptr ? message : "<...>");
  crash::noteReason(text.data());
  try {
    // Uses one write, so that concurrent failures do not mix.
    const std::string whole = text.data() + stackText(boost::stacktrace::stacktrace()) + '\n';
    std::cerr << whole << std::flush;
    crash::skipRawStack();
  } catch (const std::exception&) {
    crash::printText(text.data());  // without memory, the handler prints addresses only
  }
  std::abort();
}

}  // namespace libvarrow

namespace boost {

void assertion_failed(const char* expression, const char* function, const char*, long) {
  libvarrow::assertionFailed(expression, function);
}

void assertion_failed_msg(const char* expression, const char* message, const char* function,
                          const char*, long) {
  libvarrow::assertionFailed(expression, function, message);
}

}  // namespace boost
