// Writing to file descriptors.
#pragma once

#include <string_view>

namespace libvarrow::base {

/// Writes the whole text, in several parts if necessary, and waits for a full pipe. Returns false
/// and sets errno on failure.
bool writeAll(int descriptor, std::string_view text) noexcept;

}  // namespace libvarrow::base
