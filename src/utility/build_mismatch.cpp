#include "utility/build_mismatch.h"

#include <algorithm>
#include <iterator>

#include "libvarrow/utility/PlugInBuild.h"

namespace libvarrow {

namespace {

constexpr PlugInBuild kOwn = {LIBVARROW_PLUG_IN_MARK, LIBVARROW_VERSION_NUMBER, LIBVARROW_ABI};

// Compares byte by byte up to the first difference: another object may be smaller than the mark, at
// the end of the mapped memory.
bool beginsWithMark(const char* symbol) {
  return std::mismatch(std::begin(kOwn.mark), std::end(kOwn.mark), symbol).first ==
         std::end(kOwn.mark);
}

std::uint32_t majorOf(const PlugInBuild& build) {
  return build.versionNumber / LIBVARROW_VERSION_OF(1, 0, 0);
}

// Reads no further than the array, which a plug-in may have filled without a null character.
std::string abiOf(const PlugInBuild& build) {
  return {build.abi, std::find(build.abi, std::end(build.abi), '\0')};
}

// Replaces control characters, which would change the terminal or forge lines of the log, and bytes
// that may not be UTF-8.
std::string printable(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
  return text;
}

std::string textOf(const PlugInBuild& build) {
  const std::uint32_t minor = build.versionNumber / LIBVARROW_VERSION_OF(0, 1, 0) % 1000;
  const std::uint32_t patch = build.versionNumber % LIBVARROW_VERSION_OF(0, 1, 0);
  return "libvarrow " + std::to_string(majorOf(build)) + "." + std::to_string(minor) + "." +
         std::to_string(patch) + " (" + printable(abiOf(build)) + ")";
}

}  // namespace

std::string buildMismatch(const char* symbol) {
  if (!beginsWithMark(symbol)) return kNotABuild;
  const auto& plugIn = *reinterpret_cast<const PlugInBuild*>(symbol);
  const bool isSameMajor = majorOf(plugIn) == majorOf(kOwn);
  if (isSameMajor && abiOf(plugIn) == abiOf(kOwn)) return "";
  return std::string(isSameMajor ? "another ABI" : "another major version") +
         ": the plug-in was built against " + textOf(plugIn) + ", this library is " + textOf(kOwn) +
         "; build it again with the headers of this libvarrow";
}

}  // namespace libvarrow
