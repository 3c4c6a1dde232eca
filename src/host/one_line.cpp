#include "host/one_line.h"

#include <algorithm>

#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow::host {

namespace {

bool isUtf8() {
  static const bool is = utility::codePageName() == "UTF-8" || utility::codePageName() == "CP65001";
  return is;
}

// Returns the length of the control character at `i`, or 0. Those from U+0080 on have two bytes in
// UTF-8; terminals obey them, too. In other encodings these bytes are parts of letters.
std::size_t controlLength(const std::string& text, std::size_t i) {
  const auto byte = static_cast<unsigned char>(text[i]);
  if (byte < ' ' || byte == 0x7F) return 1;
  if (byte != 0xC2 || i + 1 == text.size() || !isUtf8()) return 0;
  const auto second = static_cast<unsigned char>(text[i + 1]);
  return second >= 0x80 && second < 0xA0 ? 2 : 0;
}

// Returns true when oneLine() would not change the text.
bool isOneLine(const std::string& text) {
  const auto isPlain = [](char c) { return c >= ' ' && c <= '~'; };
  return (text.empty() || (text.front() != ' ' && text.back() != ' ')) &&
         std::all_of(text.begin(), text.end(), isPlain);
}

}  // namespace

std::string oneLine(const std::string& text) {
  if (isOneLine(text)) return text;
  std::string line;
  std::size_t blanks = 0;
  bool hasControl = false;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t control = controlLength(text, i);
    if (control > 0 || text[i] == ' ') {
      ++blanks;
      hasControl |= control > 0;
      i += control > 0 ? control : 1;
      continue;
    }
    if (!line.empty() && blanks > 0) line.append(hasControl ? 1 : blanks, ' ');
    blanks = 0;
    hasControl = false;
    line += text[i++];
  }
  return line;
}

void cutText(std::string& text, std::size_t size) {
  if (text.size() <= size) return;
  while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U) --size;
  text.resize(size);
}

}  // namespace libvarrow::host
