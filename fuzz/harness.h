// Helpers of all fuzzers: scratch files and checks.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Returns a path in this process's directory below TMPDIR, which is removed at exit.
std::string scratch(const std::string& name);
/// Writes the bytes to scratch(name) and returns that path.
std::string writeScratch(const std::string& name, const std::string& bytes);

/// Aborts, after printing `what` and both texts, when they differ.
void requireSame(const std::string& first, const std::string& second, const char* what);
void require(bool condition, const char* what);

inline std::string textOf(const std::uint8_t* data, std::size_t size) {
  return std::string(reinterpret_cast<const char*>(data), size);
}

/// Returns true when `call` returns, false when it throws an `Error`, which is not a finding.
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
