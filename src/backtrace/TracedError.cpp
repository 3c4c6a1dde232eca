#include "libvarrow/backtrace/TracedError.h"

#include <boost/config.hpp>
#include <boost/exception/enable_error_info.hpp>
#include <boost/exception/get_error_info.hpp>
#include <boost/exception/info.hpp>
#include <boost/stacktrace.hpp>
#include <stdexcept>

#include "backtrace/crash_system.h"
#include "backtrace/stack_text.h"

namespace libvarrow {

namespace {

constexpr std::size_t kOwnFrame = 1;

}  // namespace

// Is not inlined, because its own frame is skipped.
BOOST_NOINLINE void throwTraced(const std::string& message) {
  throw boost::enable_error_info(std::runtime_error(message))
      << StackTraceInfo(boost::stacktrace::stacktrace(kOwnFrame, crash::kMaxFrames));
}

std::string callStackOf(const std::exception& error) {
  const auto* stack = boost::get_error_info<StackTraceInfo>(error);
  return stack == nullptr ? std::string() : stackText(*stack);
}

}  // namespace libvarrow
