// What the shared library lets hosts see.
#pragma once

#include "cppbind/Export.h"

#define LIBVARROW_API CPPBIND_API
#define LIBVARROW_PRINTF_LIKE(formatIndex, firstArgument) \
  CPPBIND_PRINTF_LIKE(formatIndex, firstArgument)
