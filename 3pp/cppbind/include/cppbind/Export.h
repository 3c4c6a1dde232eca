// What the shared library lets other binaries see, and how a compiler is told of printf-like calls.
#pragma once

/// @def CPPBIND_API
/// Marks what the shared library exports.

/// @def CPPBIND_PRINTF_LIKE(formatIndex, firstArgument)
/// Has the compiler check calls of a printf-like function against their formats; a member function
/// counts `this` as argument 1.

#if defined(_WIN32)
#if defined(varrow_EXPORTS)
#define CPPBIND_API __declspec(dllexport)
#else
#define CPPBIND_API __declspec(dllimport)
#endif
#define CPPBIND_PRINTF_LIKE(formatIndex, firstArgument)
#else
#define CPPBIND_API __attribute__((visibility("default")))
#define CPPBIND_PRINTF_LIKE(formatIndex, firstArgument) \
  __attribute__((format(printf, formatIndex, firstArgument)))
#endif
