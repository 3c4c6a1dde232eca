#include "libvarrow/utility/UTFConverter.h"

#include <boost/locale/encoding.hpp>
#include <cstdint>
#include <cstring>
#include <utility>

#include "base/NeverDestroyed.h"
#include "utility/utf8_text.h"

#if defined(_WIN32)
#include <windows.h>
#endif

namespace libvarrow::utility {

namespace {

#if defined(_WIN32)
std::string systemCodePageName() {
  CPINFOEXA info;
  const UINT number = GetCPInfoExA(CP_ACP, 0, &info) ? info.CodePage : GetACP();
  return "CP" + std::to_string(number);
}
#else
std::string systemCodePageName() {
  return "UTF-8";
}
#endif

// Returns the end of the ASCII characters that begin at `at`. Words of eight characters are tested
// at once, as most text is ASCII.
const unsigned char* endOfAscii(const unsigned char* at, const unsigned char* end) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::uint64_t word = 0;
  for (; end - at >= static_cast<std::ptrdiff_t>(sizeof word); at += sizeof word) {
    std::memcpy(&word, at, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  while (at != end && *at < 0x80) ++at;
  return at;
}

bool isBetween(unsigned char byte, unsigned char least, unsigned char most) {
  return least <= byte && byte <= most;
}

// The bytes that may follow a lead byte: how many, and the limits of the first of them.
struct Rest {
  int count;
  unsigned char least;
  unsigned char most;
};

// Surrogates, overlong forms and what is beyond the last character are not valid.
Rest restAfter(unsigned char lead) {
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

// Returns the end of the character of several bytes that begins at `at`, or null when none does.
const unsigned char* endOfCharacter(const unsigned char* at, const unsigned char* end) {
  const Rest rest = restAfter(*at);
  if (rest.count == 0 || end - at <= rest.count) return nullptr;
  if (!isBetween(at[1], rest.least, rest.most)) return nullptr;
  for (int i = 2; i <= rest.count; ++i) {
    if ((at[i] & 0xC0) != 0x80) return nullptr;
  }
  return at + rest.count + 1;
}

// Returns whether `text` is valid, without decoding its characters.
bool isValidUtf8(const std::string& text) {
  const auto* at = reinterpret_cast<const unsigned char*>(text.data());
  const unsigned char* const end = at + text.size();
  while ((at = endOfAscii(at, end)) != end) {
    do {
      at = endOfCharacter(at, end);
      if (at == nullptr) return false;
    } while (at != end && *at >= 0x80);
  }
  return true;
}

}  // namespace

const std::string& codePageName() {
  static base::NeverDestroyed<const std::string> name(systemCodePageName());
  return *name;
}

bool isUtf8InMemory(const std::string& text) {
  static const bool isUtf8 = codePageName() == "UTF-8";
  return isUtf8 && isValidUtf8(text);
}

std::string fromUtf8(const std::string& utf8) {
  return isUtf8InMemory(utf8) ? utf8 : boost::locale::conv::from_utf<char>(utf8, codePageName());
}

std::string fromUtf8(std::string&& utf8) {
  if (isUtf8InMemory(utf8)) return std::move(utf8);
  return boost::locale::conv::from_utf<char>(utf8, codePageName());
}

std::string toUtf8(const std::string& text) {
  return isUtf8InMemory(text) ? text : boost::locale::conv::to_utf<char>(text, codePageName());
}

}  // namespace libvarrow::utility
