#include "host/one_line.h"

namespace libvarrow::host {

namespace {

// Returns the length of the blank or control character at `i`, or 0. Control characters from U+0080
// on have two bytes in UTF-8; terminals obey them, too.
std::size_t foldedLength(const std::string& text, std::size_t i) {
  const auto byte = static_cast<unsigned char>(text[i]);
  if (byte <= ' ' || byte == 0x7F) return 1;
  if (byte != 0xC2 || i + 1 == text.size()) return 0;
  const auto second = static_cast<unsigned char>(text[i + 1]);
  return second >= 0x80 && second < 0xA0 ? 2 : 0;
}

}  // namespace

std::string oneLine(const std::string& text) {
  std::string line;
  bool gap = false;
  for (std::size_t i = 0; i < text.size();) {
    if (const std::size_t folded = foldedLength(text, i); folded > 0) {
      gap = !line.empty();
      i += folded;
      continue;
    }
    if (gap) line += ' ';
    gap = false;
    line += text[i++];
  }
  return line;
}

}  // namespace libvarrow::host
