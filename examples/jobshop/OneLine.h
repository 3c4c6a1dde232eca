// Text from anywhere as one line that is safe to print.
#pragma once

#include <string>

namespace jobshop {

/// `text` with every run of line breaks, blanks and control characters folded into one blank, and
/// none at either end.
std::string oneLine(const std::string& text);

}  // namespace jobshop
