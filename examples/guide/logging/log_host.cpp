// A host that sets up its log, and logs an error with the call stack of its origin.
#include <libvarrow/backtrace/TracedError.h>
#include <libvarrow/env/process_init.h>
#include <libvarrow/log/log.h>
#include <log4cplus/consoleappender.h>
#include <log4cplus/layout.h>
#include <log4cplus/logger.h>

#include <iostream>
#include <memory>
#include <string>

namespace {

// [handler]
// Prints warnings and errors on the console, too, independent of log.conf.
void addConsole() {
  log4cplus::SharedAppenderPtr console(
      new log4cplus::ConsoleAppender(/*logToStdErr=*/false, /*immediateFlush=*/true));
  console->setLayout(std::make_unique<log4cplus::PatternLayout>("console: %m%n"));
  console->setThreshold(log4cplus::WARN_LOG_LEVEL);
  log4cplus::Logger::getRoot().addAppender(console);
}
// [/handler]

// [traced]
void plan(int orders) {
  if (orders < 0) libvarrow::throwTraced("there are " + std::to_string(orders) + " orders");
}

bool tryToPlan(int orders) {
  try {
    plan(orders);
    return true;
  } catch (const std::exception& error) {
    // callStackOf() is empty for an error without a call stack.
    LIBVARROW_LOG_ERROR("%s\n%s", error.what(), libvarrow::callStackOf(error).c_str());
    return false;
  }
}
// [/traced]

}  // namespace

int main(int argc, char** argv) {
  // [set-up]
  LIBVARROW_LOG_WARN("before InitRootLogger, warnings go to standard error");
  libvarrow::porcessCommonInit();
  registerLogInitedHandler(addConsole);  // called at the end of every InitRootLogger
  InitRootLogger(argc > 1 ? argv[1] : "log.conf");
  // [/set-up]

  // [log]
  const std::string machine = "saw";
  LIBVARROW_LOG_DEBUG("costs nothing at INFO: the arguments are not evaluated");
  LIBVARROW_LOG_INFO("%d orders on %s", 3, machine.c_str());
  LIBVARROW_LOG_WARN("%s is down to %.1f %%", machine.c_str(), 12.5);
  // [/log]
  return tryToPlan(-1) ? 0 : 1;
}
