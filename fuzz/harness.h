// What every fuzzer needs: where its files go, and how it says that something is wrong.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// A path in a directory of this process, below TMPDIR, that goes when it ends.
std::string scratch(const std::string& name);
/// Writes the bytes to scratch(name), and returns that path.
std::string writeScratch(const std::string& name, const std::string& bytes);

/// Prints `what` with the two texts and aborts when they differ.
void requireSame(const std::string& first, const std::string& second, const char* what);
void require(bool condition, const char* what);

inline std::string textOf(const std::uint8_t* data, std::size_t size) {
  return std::string(reinterpret_cast<const char*>(data), size);
}

/// Whether `call` came to its end; an exception of the kind that it may throw is no finding.
template <class Error = std::exception, class Call>
bool passes(Call call) {
  try {
    call();
    return true;
  } catch (const Error&) {
    return false;
  }
}

}  // namespace fuzz
