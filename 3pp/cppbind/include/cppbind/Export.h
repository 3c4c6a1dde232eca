// What the shared library lets other binaries see, and how a compiler is told of printf-like calls.
#pragma once

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
