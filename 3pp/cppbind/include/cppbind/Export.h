// Macros: exported symbols of the shared library, and format checks of printf-like functions.
#pragma once

/// @def CPPBIND_API
/// Marks a class or function as exported by the shared library.

/// @def CPPBIND_VISIBLE_TYPE
/// Marks a class whose virtual table and type information are visible to other libraries, and of
/// which CPPBIND_API exports members. Needed for a base that is an instance of a template of the
/// standard library: Visual C++ would export that with the class, in conflict with a host's own.

/// @def CPPBIND_PRINTF_LIKE(formatIndex, firstArgument)
/// Makes the compiler check the arguments of a printf-like function against its format. In a member
/// function `this` is argument 1.

/// @def CPPBIND_COLD
/// Keeps a rarely called function of a header out of its callers, which compile faster.

#if defined(_WIN32)
#if defined(varrow_EXPORTS)
#define CPPBIND_API __declspec(dllexport)
#else
#define CPPBIND_API __declspec(dllimport)
#endif
#define CPPBIND_VISIBLE_TYPE
#else
#define CPPBIND_API __attribute__((visibility("default")))
#define CPPBIND_VISIBLE_TYPE __attribute__((visibility("default")))
#endif

#if defined(__MINGW32__)
// The C library of mingw-w64 has two printf dialects; the C++ headers select that of GNU.
#define CPPBIND_PRINTF_LIKE(formatIndex, firstArgument) \
  __attribute__((format(gnu_printf, formatIndex, firstArgument)))
#elif defined(__GNUC__)
#define CPPBIND_PRINTF_LIKE(formatIndex, firstArgument) \
  __attribute__((format(printf, formatIndex, firstArgument)))
#else
#define CPPBIND_PRINTF_LIKE(formatIndex, firstArgument)
#endif

#if defined(__GNUC__)
#define CPPBIND_COLD __attribute__((noinline, cold))
#else
#define CPPBIND_COLD
#endif
