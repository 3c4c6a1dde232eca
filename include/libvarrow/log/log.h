// Configures the root logger and logs through it.
#pragma once

#include <boost/current_function.hpp>
#include <boost/function.hpp>
#include <string>

#include "libvarrow/Export.h"

/// Configures the root logger from the log4cplus property file `confFile`. When the file cannot be
/// read: prints "WARNING: can not found log.conf\n" to standard output and logs at level INFO to
/// the console, to "log.txt" and, from WARN upward, to "error_log.txt" in the current directory.
/// Then calls every registered handler. A file that configures no appender of the root logger is
/// valid: warnings and errors then go to standard error, and other messages are dropped.
///
/// May be called again. The default configuration adds its appenders to those of the root logger. A
/// file replaces the appenders of each logger that it names and keeps the other loggers. `confFile`
/// is opened once, so it may be a pipe.
///
/// Throws boost::bad_function_call when a handler is empty. Not thread-safe: call it on the main
/// thread before other threads log.
LIBVARROW_API void InitRootLogger(std::string confFile);

/// Makes later calls of InitRootLogger call a copy of `handler` at their end, in the order of
/// registration, so that the host can add appenders. Not thread-safe.
LIBVARROW_API void registerLogInitedHandler(const boost::function<void()>& handler);

/// Does nothing: a registered handler stays until the process ends.
LIBVARROW_API void unRegisterLogInitedHandler(const boost::function<void()>& handler);

namespace libvarrow::logging {

/// The root logger's levels, in rising order.
enum class Level { Debug, Info, Warn, Error };

/// Returns whether the root logger accepts messages of `level` now. Thread-safe.
LIBVARROW_API bool isEnabled(Level level);

/// Logs a printf-like message through the root logger, for the macros below. Before InitRootLogger,
/// warnings and errors go to standard error, and other messages are dropped. Thread-safe.
LIBVARROW_API void write(Level level, const char* file, int line, const char* function,
                         const char* format, ...) LIBVARROW_PRINTF_LIKE(5, 6);

}  // namespace libvarrow::logging

/// Logs a printf-like message. The format is a string literal; text from any other source is an
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
/// Logs at that level like LIBVARROW_LOG. Evaluates the arguments only when the root logger accepts
/// the level.
#define LIBVARROW_LOG_DEBUG(...) LIBVARROW_LOG(::libvarrow::logging::Level::Debug, __VA_ARGS__)
#define LIBVARROW_LOG_INFO(...) LIBVARROW_LOG(::libvarrow::logging::Level::Info, __VA_ARGS__)
#define LIBVARROW_LOG_WARN(...) LIBVARROW_LOG(::libvarrow::logging::Level::Warn, __VA_ARGS__)
#define LIBVARROW_LOG_ERROR(...) LIBVARROW_LOG(::libvarrow::logging::Level::Error, __VA_ARGS__)
///@}
