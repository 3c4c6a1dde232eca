// A hash of short texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace libvarrow::base {

namespace detail {

template <class Word>
std::uint64_t wordAt(const char* at) {
  Word word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

// Returns the last eight characters, or all of a shorter text. Words overlap, because a copy of as
// many characters as are left would be a call.
inline std::uint64_t lastWord(std::string_view text) {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  if (text.size() >= 8) return wordAt<std::uint64_t>(end - 8);
  if (text.size() >= 4) {
    return wordAt<std::uint32_t>(begin) | wordAt<std::uint32_t>(end - 4) << 32;
  }
  std::uint64_t word = 0;
  for (const char character : text) word = word << 8 | static_cast<unsigned char>(character);
  return word;
}

}  // namespace detail

/// Returns a hash of `text` for tables in memory; each bit depends on every character. Inline,
/// because a call of the standard library's takes longer than the search for a key.
inline std::uint64_t textHash(std::string_view text) {
  std::uint64_t hash = text.size();
  const auto mix = [&hash](std::uint64_t word) {
    hash = (hash ^ word) * 0x9E3779B97F4A7C15U;  // 2^64 divided by the golden ratio
    hash ^= hash >> 32;
  };
  std::string_view rest = text;
  for (; rest.size() > 8; rest.remove_prefix(8)) mix(detail::wordAt<std::uint64_t>(rest.data()));
  mix(detail::lastWord(text));
  mix(0);
  return hash;
}

}  // namespace libvarrow::base
