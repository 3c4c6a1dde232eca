// Runtime errors that carry the call stack of their origin.
#pragma once

#include <boost/stacktrace/stacktrace_fwd.hpp>
#include <exception>
#include <string>

#include "libvarrow/Export.h"

namespace boost {
template <class Tag, class T>
class error_info;
}

namespace libvarrow {

struct tag_stacktrace;

/// The call stack attached to a traced error, as Boost's error information:
/// `boost::get_error_info<libvarrow::StackTraceInfo>(error)`, with <boost/exception/all.hpp> and
/// <boost/stacktrace.hpp>.
using StackTraceInfo = boost::error_info<tag_stacktrace, boost::stacktrace::stacktrace>;

/// Throws a std::runtime_error with `message` and the call stack: at most 128 frames, the caller
/// first.
[[noreturn]] LIBVARROW_API void throwTraced(const std::string& message);

/// Returns the call stack that `error` carries, one line per frame; empty when it carries none.
///
///     } catch (const std::exception& error) {
///       LIBVARROW_LOG_ERROR("%s\n%s", error.what(), libvarrow::callStackOf(error).c_str());
///     }
LIBVARROW_API std::string callStackOf(const std::exception& error);

}  // namespace libvarrow
