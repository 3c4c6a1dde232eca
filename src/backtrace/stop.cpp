#include "backtrace/stop.h"

#include <iostream>

#include "backtrace/last_line.h"
#include "libvarrow/backtrace/BackTraceException.h"
#include "libvarrow/log/log.h"
#include "log/standard_error.h"

namespace libvarrow {

void printReason(const std::string& reason) {
  crash::noteReason(reason);
  std::cout << std::flush;
  std::cerr << reason + '\n' << std::flush;
}

void stop(const std::string& reason) {
  printReason(reason);
  throw BackTraceException();
}

void stopAfterLogging(const std::string& reason) {
  crash::noteReason(reason);
  if (!logging::goesToStandardError(logging::Level::Error)) printReason(reason);
  throw BackTraceException();
}

}  // namespace libvarrow
