#include "cppbind/TextPositions.h"

#include <algorithm>

#include "base/utf8.h"

namespace cppbind {

namespace {

// at() counts at most as many bytes from a mark.
constexpr std::size_t kBytesBetweenMarks = 64;

std::size_t characterLength(std::string_view text, std::size_t offset) {
  const auto* const begin = reinterpret_cast<const unsigned char*>(text.data());
  const unsigned char* const at = begin + offset;
  if (*at < 0x80) return 1;
  const unsigned char* const end = libvarrow::base::endOfUtf8Character(at, begin + text.size());
  return end == nullptr ? 1 : static_cast<std::size_t>(end - at);
}

}  // namespace

TextPositions::TextPositions(std::string_view text) : text_(text) {
  marks_.reserve(text.size() / kBytesBetweenMarks + 1);
  marks_.push_back({libvarrow::base::byteOrderMarkLength(text), {1, 1}});
  while (marks_.size() <= text.size() / kBytesBetweenMarks) {
    marks_.push_back(lastMarkUpTo(marks_.size() * kBytesBetweenMarks));
  }
}

TextPosition TextPositions::at(std::size_t offset) const {
  return lastMarkUpTo(std::min(offset, text_.size())).position;
}

// Returns the beginning of the last character that begins at `offset` or before.
TextPositions::Mark TextPositions::lastMarkUpTo(std::size_t offset) const {
  Mark mark = marks_[std::min(offset / kBytesBetweenMarks, marks_.size() - 1)];
  while (mark.offset < offset) {
    const char c = text_[mark.offset];
    if (c >= ' ' && c <= '~') {  // without a call, as most characters are
      ++mark.offset;
      ++mark.position.column;
      continue;
    }
    const std::size_t next = mark.offset + characterLength(text_, mark.offset);
    if (next > offset) break;
    const bool isLineEnd = c == '\n' || (c == '\r' && text_.substr(next, 1) != "\n");
    if (isLineEnd) ++mark.position.line;
    mark.position.column = isLineEnd ? 1 : mark.position.column + 1;
    mark.offset = next;
  }
  return mark;
}

}  // namespace cppbind
