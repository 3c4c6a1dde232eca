// Texts that are safe on one line.
#pragma once

#include <cstddef>
#include <string>

namespace libvarrow::host {

/// Returns `text` without control characters: each run of blanks that contains one becomes one
/// blank, so that a text of a file cannot look like several lines or command a terminal. Removes
/// blanks at both ends.
std::string oneLine(const std::string& text);

/// Cuts `text` to at most `size` bytes, between characters of UTF-8.
void cutText(std::string& text, std::size_t size);

}  // namespace libvarrow::host
