#include "libvarrow/backtrace/BackTraceException.h"

#include <cstdlib>

#include "backtrace/stop.h"
#include "libvarrow/backtrace/Check.h"

namespace libvarrow {

BackTraceException::BackTraceException() {
  initTrack();
  // Raising one is a failed check on purpose: whoever would catch it could not go on.
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
