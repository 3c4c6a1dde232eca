// The log as it is before anybody configures it.
#pragma once

#include "libvarrow/log/log.h"

namespace libvarrow::logging {

/// Whether messages of `level` go to standard error, as the root logger has no appender.
bool goesToStandardError(Level level);

/// Logs the warning "SUBJECT TEXT: out of memory" from where no exception may leave. Writes it to
/// standard error when there is not even memory for the log. `text` is a literal of the source.
void warnOfMemory(const char* subject, const char* text) noexcept;

}  // namespace libvarrow::logging
