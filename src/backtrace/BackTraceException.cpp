#include "libvarrow/backtrace/BackTraceException.h"

#include <cstdlib>

#include "backtrace/stop.h"
#include "libvarrow/backtrace/Check.h"

namespace libvarrow {

BackTraceException::BackTraceException() {
  initTrack();
  // Fails a check deliberately: code that caught the exception could not continue.
  LIBVARROW_CHECK(false);
  std::abort();
}

const char* BackTraceException::what() const noexcept {
  return "error";
}

void BackTraceException::trans_func(unsigned int code, _EXCEPTION_POINTERS*) {
  stop("structured exception " + std::to_string(code));
}

void BackTraceException::initTrack() {}

}  // namespace libvarrow
