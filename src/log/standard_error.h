// The log before it is configured.
#pragma once

#include "libvarrow/log/log.h"

namespace libvarrow::logging {

/// Returns whether messages of `level` go to standard error for lack of an appender.
bool goesToStandardError(Level level);

/// Logs the warning "SUBJECT TEXT: out of memory" from where no exception may leave. Writes it to
/// standard error when there is not even memory for the log. `text` is a literal of the source.
void warnOfMemory(const char* subject, const char* text) noexcept;

}  // namespace libvarrow::logging
