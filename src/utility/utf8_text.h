// A check for text that needs no conversion between memory and UTF-8 files.
#pragma once

#include <string>

namespace libvarrow::utility {

/// Returns whether the program's narrow encoding is UTF-8 and `text` is valid in it. The converter
/// would return the same text at fifty times the cost of this check.
bool isUtf8InMemory(const std::string& text);

}  // namespace libvarrow::utility
