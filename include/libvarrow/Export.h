// What the shared library lets hosts see.
#pragma once

#include "cppbind/Export.h"

/// Marks what the shared library exports.
#define LIBVARROW_API CPPBIND_API
/// CPPBIND_PRINTF_LIKE.
#define LIBVARROW_PRINTF_LIKE(formatIndex, firstArgument) \
  CPPBIND_PRINTF_LIKE(formatIndex, firstArgument)
