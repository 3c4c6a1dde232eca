// Setting the root logger up, and logging through it.
#pragma once

#include <boost/current_function.hpp>
#include <boost/function.hpp>
#include <string>

#include "libvarrow/Export.h"

/// Sets the root logger up from the log4cplus property file `confFile`. When that cannot be read:
/// prints "WARNING: can not found log.conf\n" to standard output and logs to the console, to
/// "log.txt" and, from WARN upward, to "error_log.txt" in the current directory, at level INFO.
/// Then calls every registered handler. A file that configures no appender of the root logger is no
/// error: warnings and errors then go to standard error, the rest is dropped.
///
/// May be called again. The default configuration adds its appenders to those of the root logger. A
/// file replaces the appenders of each logger that it names and keeps the other loggers. `confFile`
/// is opened once, so it may be a pipe.
///
/// Throws boost::bad_function_call for an empty handler. Not thread-safe: call it on the main thread
/// before other threads log.
LIBVARROW_API void InitRootLogger(std::string confFile);

/// Has a copy of `handler` called at the end of every later InitRootLogger, in the order of
/// registration, to add appenders of its own say. Not locked.
LIBVARROW_API void registerLogInitedHandler(const boost::function<void()>& handler);

/// Does nothing: a registered handler stays for the life of the process.
LIBVARROW_API void unRegisterLogInitedHandler(const boost::function<void()>& handler);

namespace libvarrow::logging {

/// The root logger's levels, in rising order.
enum class Level { Debug, Info, Warn, Error };

/// Whether the root logger takes messages of `level` now. Thread safe.
LIBVARROW_API bool isEnabled(Level level);

/// Logs a printf-like message through the root logger; the macros below call it. Before
/// InitRootLogger, warnings and errors go to standard error and the rest is dropped. Thread safe.
LIBVARROW_API void write(Level level, const char* file, int line, const char* function,
                         const char* format, ...) LIBVARROW_PRINTF_LIKE(5, 6);

}  // namespace libvarrow::logging

/// Logs a printf-like message. The format is a literal of the source: text from anywhere else is an
/// argument ("%s"). Numbers have a decimal point under every locale.
///
///     LIBVARROW_LOG_INFO("%d operations of %s", count, name.c_str());
#define LIBVARROW_LOG(level, ...)                                                    \
  do {                                                                               \
    if (::libvarrow::logging::isEnabled(level)) {                                    \
      ::libvarrow::logging::write(level, __FILE__, __LINE__, BOOST_CURRENT_FUNCTION, \
                                  "" __VA_ARGS__);                                   \
    }                                                                                \
  } while (false)
///@{
/// LIBVARROW_LOG at that level. Arguments are evaluated only when the root logger takes it.
#define LIBVARROW_LOG_DEBUG(...) LIBVARROW_LOG(::libvarrow::logging::Level::Debug, __VA_ARGS__)
#define LIBVARROW_LOG_INFO(...) LIBVARROW_LOG(::libvarrow::logging::Level::Info, __VA_ARGS__)
#define LIBVARROW_LOG_WARN(...) LIBVARROW_LOG(::libvarrow::logging::Level::Warn, __VA_ARGS__)
#define LIBVARROW_LOG_ERROR(...) LIBVARROW_LOG(::libvarrow::logging::Level::Error, __VA_ARGS__)
///@}
