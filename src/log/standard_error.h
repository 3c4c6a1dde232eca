// The log as it is before anybody configures it.
#pragma once

#include "libvarrow/log/log.h"

namespace libvarrow::logging {

/// Whether messages of `level` go to standard error, as the root logger has no appender.
bool goesToStandardError(Level level);

}  // namespace libvarrow::logging
