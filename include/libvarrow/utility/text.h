// Small text helpers.
#pragma once

#include <cstdint>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Puts `prefix` in front of every line of `text`, a last one without line feed included:
/// ("> ", "x\ny") gives "> x\n> y", ("> ", "x\n") gives "> x\n", empty text stays empty.
LIBVARROW_API std::string PrefixOnEachLine(const std::string& prefix, const std::string& text);

/// 0, 1, 2, ... for the calls with one name, independently of other names. Thread safe.
LIBVARROW_API std::uint64_t getSerialNum(const std::string& name);

}  // namespace libvarrow
