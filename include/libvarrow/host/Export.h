// Exported symbols of the host library.
#pragma once

/// @def LIBVARROW_HOST_API
/// Marks a class or function as exported by libvarrow-host.

#if !defined(_WIN32)
#define LIBVARROW_HOST_API __attribute__((visibility("default")))
#elif defined(varrow_host_EXPORTS)
#define LIBVARROW_HOST_API __declspec(dllexport)
#else
#define LIBVARROW_HOST_API __declspec(dllimport)
#endif
