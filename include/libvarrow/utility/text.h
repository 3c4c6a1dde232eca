// Small text helpers.
#pragma once

#include <cstdint>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Returns `text` with `prefix` in front of every line, also of a last line without line feed:
/// ("> ", "x\ny") gives "> x\n> y", ("> ", "x\n") gives "> x\n". Empty text stays empty.
LIBVARROW_API std::string PrefixOnEachLine(const std::string& prefix, const std::string& text);

/// Returns 0, 1, 2, ... for successive calls with the same name; names are independent.
/// Thread-safe.
LIBVARROW_API std::uint64_t getSerialNum(const std::string& name);

}  // namespace libvarrow
