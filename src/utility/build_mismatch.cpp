#include "utility/build_mismatch.h"

#include <algorithm>
#include <iterator>

#include "libvarrow/utility/PlugInBuild.h"

namespace libvarrow {

namespace {

constexpr PlugInBuild kOwn = {LIBVARROW_VERSION_NUMBER, LIBVARROW_ABI};

std::uint32_t majorOf(const PlugInBuild& build) {
  return build.versionNumber / LIBVARROW_VERSION_OF(1, 0, 0);
}

// Reads no further than the array, which a plug-in may have filled without a null character.
std::string abiOf(const PlugInBuild& build) {
  return {build.abi, std::find(build.abi, std::end(build.abi), '\0')};
}

std::string textOf(const PlugInBuild& build) {
  const std::uint32_t minor = build.versionNumber / LIBVARROW_VERSION_OF(0, 1, 0) % 1000;
  const std::uint32_t patch = build.versionNumber % LIBVARROW_VERSION_OF(0, 1, 0);
  return "libvarrow " + std::to_string(majorOf(build)) + "." + std::to_string(minor) + "." +
         std::to_string(patch) + " (" + abiOf(build) + ")";
}

}  // namespace

std::string buildMismatch(const PlugInBuild& plugIn) {
  if (majorOf(plugIn) == majorOf(kOwn) && abiOf(plugIn) == abiOf(kOwn)) return "";
  return "the plug-in was built against " + textOf(plugIn) + ", this is " + textOf(kOwn);
}

}  // namespace libvarrow
