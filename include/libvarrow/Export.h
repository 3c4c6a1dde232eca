// Export macros of the shared library.
#pragma once

#include "cppbind/Export.h"

/// Marks a declaration that the shared library exports.
#define LIBVARROW_API CPPBIND_API
/// Does the same as CPPBIND_VISIBLE_TYPE.
#define LIBVARROW_VISIBLE_TYPE CPPBIND_VISIBLE_TYPE
/// Does the same as CPPBIND_PRINTF_LIKE.
#define LIBVARROW_PRINTF_LIKE(formatIndex, firstArgument) \
  CPPBIND_PRINTF_LIKE(formatIndex, firstArgument)
