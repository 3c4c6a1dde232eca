// The forms of UTF-8. Inline, as converters test every character of a text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace libvarrow::base {

/// The bytes that may follow a lead byte: how many, and the limits of the first of them.
struct Utf8Rest {
  int count;
  unsigned char least;
  unsigned char most;
};

inline bool isBetween(unsigned char byte, unsigned char least, unsigned char most) {
  return least <= byte && byte <= most;
}

/// Returns a count of 0 for a byte that leads no character of several bytes. Surrogates, overlong
/// forms and numbers beyond the last character are not valid.
inline Utf8Rest utf8RestAfter(unsigned char lead) {
  if (isBetween(lead, 0xC2, 0xDF)) return {1, 0x80, 0xBF};
  if (isBetween(lead, 0xE0, 0xEF)) {
    return {2, static_cast<unsigned char>(lead == 0xE0 ? 0xA0 : 0x80),
            static_cast<unsigned char>(lead == 0xED ? 0x9F : 0xBF)};
  }
  if (isBetween(lead, 0xF0, 0xF4)) {
    return {3, static_cast<unsigned char>(lead == 0xF0 ? 0x90 : 0x80),
            static_cast<unsigned char>(lead == 0xF4 ? 0x8F : 0xBF)};
  }
  return {0, 0, 0};
}

/// Returns the end of the valid character of several bytes that begins at `at`, or null if none
/// does.
inline const unsigned char* endOfUtf8Character(const unsigned char* at, const unsigned char* end) {
  const Utf8Rest rest = utf8RestAfter(*at);
  if (rest.count == 0 || end - at <= rest.count) return nullptr;
  if (!isBetween(at[1], rest.least, rest.most)) return nullptr;
  for (int i = 2; i <= rest.count; ++i) {
    if ((at[i] & 0xC0) != 0x80) return nullptr;
  }
  return at + rest.count + 1;
}

/// Returns the end of the ASCII characters that begin at `at`. Words of eight characters are tested
/// at once, as most text is ASCII.
inline const unsigned char* endOfAscii(const unsigned char* at, const unsigned char* end) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::uint64_t word = 0;
  for (; end - at >= static_cast<std::ptrdiff_t>(sizeof word); at += sizeof word) {
    std::memcpy(&word, at, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  while (at != end && *at < 0x80) ++at;
  return at;
}

/// Returns whether `text` is valid, without decoding its characters.
inline bool isValidUtf8(std::string_view text) {
  const auto* at = reinterpret_cast<const unsigned char*>(text.data());
  const unsigned char* const end = at + text.size();
  while ((at = endOfAscii(at, end)) != end) {
    do {
      at = endOfUtf8Character(at, end);
      if (at == nullptr) return false;
    } while (at != end && *at >= 0x80);
  }
  return true;
}

/// Returns the length of the mark that some editors put in front of a text, 0 if there is none.
inline std::size_t byteOrderMarkLength(std::string_view text) {
  return text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
}

}  // namespace libvarrow::base
