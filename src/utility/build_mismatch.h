// Comparison of a plug-in's build with that of the library.
#pragma once

#include <string>

namespace libvarrow {

constexpr const char* kNotABuild = "libvarrowPlugInBuild is not a LIBVARROW_PLUG_IN_BUILD";

/// Returns why the library cannot exchange objects with a plug-in whose libvarrowPlugInBuild is at
/// `symbol`: another major version, another ABI, or the symbol is another object (kNotABuild).
/// Returns an empty text when it can.
std::string buildMismatch(const char* symbol);

}  // namespace libvarrow
