// Comparison of a plug-in's build with that of the library.
#pragma once

#include <string>

namespace libvarrow {

struct PlugInBuild;

/// Returns why the library cannot exchange objects with a plug-in of the build `plugIn`: another
/// major version or another ABI. Returns an empty text when it can.
std::string buildMismatch(const PlugInBuild& plugIn);

}  // namespace libvarrow
