// The exception by which the library stops with a back-trace.
#pragma once

#include <exception>
#include <string>

#include "libvarrow/Export.h"

struct _EXCEPTION_POINTERS;  // NOLINT(bugprone-reserved-identifier): the platform's name

namespace libvarrow {

/// An exception that is never caught: its construction ends the process. The statement `throw
/// BackTraceException();` prints a failed assertion and the call stack to standard error and
/// aborts. The library writes its reason to standard error before it raises one.
class LIBVARROW_API BackTraceException : public std::exception {
 public:
  [[noreturn]] BackTraceException();

  /// Returns "error", independent of the message.
  const char* what() const noexcept override;

  /// Constructs a BackTraceException, as a structured-exception translator. The library does not
  /// install it; a host may install it for a thread where its platform has such translators.
  static void trans_func(unsigned int code, _EXCEPTION_POINTERS* info);

 private:
  void initTrack();

  std::string message_;
};

}  // namespace libvarrow
