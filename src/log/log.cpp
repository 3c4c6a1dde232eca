#include "libvarrow/log/log.h"

#include <log4cplus/configurator.h>
#include <log4cplus/consoleappender.h>
#include <log4cplus/fileappender.h>
#include <log4cplus/layout.h>
#include <log4cplus/logger.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <utility>
#include <vector>

#include "base/ClassicNumbers.h"
#include "base/NeverDestroyed.h"
#include "log/standard_error.h"

namespace {

// Messages from this level upward go to standard error while no log is configured.
constexpr auto kStandardErrorLevel = libvarrow::logging::Level::Warn;
constexpr const char* kPattern = "%i %D{%Y-%m-%d %H:%M:%S}  %-5p - %m [%b:%L]%n";

std::vector<boost::function<void()>>& handlers() {
  static libvarrow::base::NeverDestroyed<std::vector<boost::function<void()>>> list;
  return *list;
}

// On some systems a directory can be opened but not read.
bool canRead(std::istream& file) {
  file.peek();
  return file.good() || file.eof();
}

void addToRoot(log4cplus::SharedAppenderPtr appender) {
  appender->setLayout(std::make_unique<log4cplus::PatternLayout>(kPattern));
  log4cplus::Logger::getRoot().addAppender(std::move(appender));
}

log4cplus::SharedAppenderPtr fileAppender(const char* fileName) {
  return log4cplus::SharedAppenderPtr(
      new log4cplus::FileAppender(fileName, std::ios_base::app, /*immediateFlush=*/true));
}

void configureDefault() {
  addToRoot(log4cplus::SharedAppenderPtr(
      new log4cplus::ConsoleAppender(/*logToStdErr=*/false, /*immediateFlush=*/true)));
  addToRoot(fileAppender("log.txt"));
  log4cplus::SharedAppenderPtr errors = fileAppender("error_log.txt");
  errors->setThreshold(log4cplus::WARN_LOG_LEVEL);
  addToRoot(errors);
  log4cplus::Logger::getRoot().setLogLevel(log4cplus::INFO_LOG_LEVEL);
}

log4cplus::LogLevel nativeLevel(libvarrow::logging::Level level) {
  switch (level) {
    case libvarrow::logging::Level::Debug:
      return log4cplus::DEBUG_LOG_LEVEL;
    case libvarrow::logging::Level::Info:
      return log4cplus::INFO_LOG_LEVEL;
    case libvarrow::logging::Level::Warn:
      return log4cplus::WARN_LOG_LEVEL;
    case libvarrow::logging::Level::Error:
      break;
  }
  return log4cplus::ERROR_LOG_LEVEL;
}

bool hasNoAppender() {
  return log4cplus::Logger::getRoot().getAllAppenders().empty();
}

LIBVARROW_PRINTF_LIKE(1, 0)
std::string formatted(const char* format, std::va_list arguments) {
  [[maybe_unused]] const libvarrow::base::ClassicNumbers classicNumbers{};
  std::va_list again;
  va_copy(again, arguments);
  char text[512];
  const int written = std::vsnprintf(text, sizeof text, format, arguments);
  const std::size_t length = written < 0 ? 0 : static_cast<std::size_t>(written);
  std::string message(text, std::min(length, sizeof text - 1));
  if (length >= sizeof text) {
    message.resize(length + 1);
    std::vsnprintf(message.data(), message.size(), format, again);
    message.pop_back();
  }
  va_end(again);
  return message;
}

}  // namespace

void InitRootLogger(std::string confFile) {
  // Opens the file once, because a pipe can be read only once.
  std::ifstream file(confFile);
  if (canRead(file)) {
    log4cplus::PropertyConfigurator(file).configure();
  } else {
    std::cout << "WARNING: can not found log.conf\n" << std::flush;
    configureDefault();
    LIBVARROW_LOG_WARN("No log.conf, this is default log conf by hard code!");
  }
  // Copies the list, because a handler may register others, which the next call runs.
  const std::vector<boost::function<void()>> registered = handlers();
  for (const boost::function<void()>& handler : registered) handler();
}

void registerLogInitedHandler(const boost::function<void()>& handler) {
  handlers().push_back(handler);
}

// Handlers cannot be removed: every later InitRootLogger must repeat their set-up.
void unRegisterLogInitedHandler(const boost::function<void()>&) {}

namespace libvarrow::logging {

bool goesToStandardError(Level level) {
  return hasNoAppender() && level >= kStandardErrorLevel && isEnabled(level);
}

bool isEnabled(Level level) {
  return log4cplus::Logger::getRoot().isEnabledFor(nativeLevel(level));
}

void write(Level level, const char* file, int line, const char* function, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const std::string message = formatted(format, arguments);
  va_end(arguments);
  if (hasNoAppender()) {
    if (level >= kStandardErrorLevel) std::cerr << message << std::endl;
    return;
  }
  log4cplus::Logger::getRoot().forcedLog(nativeLevel(level), message, file, line, function);
}

void warnOfMemory(const char* subject, const char* text) noexcept {
  try {
    LIBVARROW_LOG_WARN("%s %s: out of memory", subject, text);
  } catch (...) {
    std::fprintf(stderr, "%s %s: out of memory\n", subject, text);  // unbuffered: no allocation
  }
}

}  // namespace libvarrow::logging
