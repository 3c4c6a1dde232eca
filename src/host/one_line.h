// Text on one line.
#pragma once

#include <string>

namespace libvarrow::host {

/// Returns `text` without control characters: each run of them and of blanks becomes one blank, so
/// that a text of a file cannot look like several lines or command a terminal.
std::string oneLine(const std::string& text);

}  // namespace libvarrow::host
