// The library's way of stopping with a back-trace.
#pragma once

#include <exception>
#include <string>

#include "libvarrow/Export.h"

struct _EXCEPTION_POINTERS;  // NOLINT(bugprone-reserved-identifier): the platform's name

namespace libvarrow {

/// Constructing one ends the process: `throw BackTraceException();` prints where it stands, and the
/// call stack, to standard error and aborts. It is never caught. The library writes its reason to
/// standard error before it raises one.
class LIBVARROW_API BackTraceException : public std::exception {
 public:
  [[noreturn]] BackTraceException();

  /// "error", whatever the message holds.
  const char* what() const noexcept override;

  /// A structured-exception translator that constructs a BackTraceException. Not installed by the
  /// library; a host may install it for a thread where its platform has such translators.
  static void trans_func(unsigned int code, _EXCEPTION_POINTERS* info);

 private:
  void initTrack();

  std::string message_;
};

}  // namespace libvarrow
