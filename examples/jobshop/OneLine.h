// Any text as one line that is safe to print.
#pragma once

#include <string>

namespace jobshop {

/// Returns `text` with every run of line breaks, blanks and control characters replaced by one
/// blank, and without blanks at either end.
std::string oneLine(const std::string& text);

}  // namespace jobshop
