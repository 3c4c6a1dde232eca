// The version of the library and the ABI that a plug-in was built against.
#pragma once

#include <json/version.h>

#include <boost/config.hpp>
#include <boost/version.hpp>
#include <cstdint>

#include "libvarrow/version.h"

/// @def LIBVARROW_ABI_STANDARD_LIBRARY
/// The C++ standard library, with the settings that change the layout of its classes.
#if defined(_LIBCPP_VERSION)
#define LIBVARROW_ABI_STANDARD_LIBRARY \
  "libc++, _LIBCPP_ABI_VERSION=" BOOST_STRINGIZE(_LIBCPP_ABI_VERSION)
#elif defined(_GLIBCXX_DEBUG)
#define LIBVARROW_ABI_STANDARD_LIBRARY \
  "libstdc++, _GLIBCXX_USE_CXX11_ABI=" BOOST_STRINGIZE(_GLIBCXX_USE_CXX11_ABI) ", _GLIBCXX_DEBUG"
#elif defined(__GLIBCXX__)
#define LIBVARROW_ABI_STANDARD_LIBRARY \
  "libstdc++, _GLIBCXX_USE_CXX11_ABI=" BOOST_STRINGIZE(_GLIBCXX_USE_CXX11_ABI)
#elif defined(_DLL)
#define LIBVARROW_ABI_STANDARD_LIBRARY \
  "shared Microsoft STL, _ITERATOR_DEBUG_LEVEL=" BOOST_STRINGIZE(_ITERATOR_DEBUG_LEVEL)
#else
#define LIBVARROW_ABI_STANDARD_LIBRARY \
  "static Microsoft STL, _ITERATOR_DEBUG_LEVEL=" BOOST_STRINGIZE(_ITERATOR_DEBUG_LEVEL)
#endif

/// @def LIBVARROW_ABI_TIME
/// The resolution of Boost's times, which a macro of Boost changes.
#ifdef BOOST_DATE_TIME_POSIX_TIME_STD_CONFIG
#define LIBVARROW_ABI_TIME ", BOOST_DATE_TIME_POSIX_TIME_STD_CONFIG"
#else
#define LIBVARROW_ABI_TIME ""
#endif

/// @def LIBVARROW_ABI_LOCKS
/// The locks in Boost's shared pointers, which a macro of Boost changes.
#ifdef BOOST_SP_USE_PTHREADS
#define LIBVARROW_ABI_LOCKS ", BOOST_SP_USE_PTHREADS"
#else
#define LIBVARROW_ABI_LOCKS ""
#endif

/// Names the settings that two libraries must share to exchange objects. Versions of the compiler
/// and of the standard library are missing, as these keep their ABI; Boost and JsonCpp do not.
#define LIBVARROW_ABI                                                 \
  LIBVARROW_ABI_STANDARD_LIBRARY                                      \
  ", Boost " BOOST_LIB_VERSION LIBVARROW_ABI_TIME LIBVARROW_ABI_LOCKS \
  ", JsonCpp " JSONCPP_VERSION_STRING

/// Begins every PlugInBuild, so that another symbol of the same name is not mistaken for one.
#define LIBVARROW_PLUG_IN_MARK "varrow1"

namespace libvarrow {

/// The version and the ABI that a plug-in was built against. Plain data of a fixed layout, so that
/// every version of the library can read it without running code of the plug-in.
struct PlugInBuild {
  char mark[8];                 ///< LIBVARROW_PLUG_IN_MARK
  std::uint32_t versionNumber;  ///< LIBVARROW_VERSION_NUMBER
  char abi[244];                ///< LIBVARROW_ABI, followed by null characters
};

}  // namespace libvarrow

/// Exports the version and the ABI that a plug-in is built against, for DllManager to check.
/// Belongs in one source of the plug-in, beside the alias "initModule".
#define LIBVARROW_PLUG_IN_BUILD()                                                     \
  extern "C" BOOST_SYMBOL_EXPORT const ::libvarrow::PlugInBuild libvarrowPlugInBuild; \
  const ::libvarrow::PlugInBuild libvarrowPlugInBuild = {LIBVARROW_PLUG_IN_MARK,      \
                                                         LIBVARROW_VERSION_NUMBER, LIBVARROW_ABI}
