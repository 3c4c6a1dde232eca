#include "libvarrow/utility/UTFConverter.h"

#include <boost/locale/encoding.hpp>
#include <boost/locale/utf.hpp>
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
const char* endOfAscii(const char* at, const char* end) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::uint64_t word = 0;
  for (; end - at >= static_cast<std::ptrdiff_t>(sizeof word); at += sizeof word) {
    std::memcpy(&word, at, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  while (at != end && static_cast<unsigned char>(*at) < 0x80) ++at;
  return at;
}

bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Returns the end of the characters of three bytes that begin at `at`, except those whose second
// byte has a limit of its own. All common Chinese characters are among them.
const char* endOfTriples(const char* at, const char* end) {
  for (; end - at >= 3; at += 3) {
    const auto lead = static_cast<unsigned char>(*at);
    if ((lead & 0xF0) != 0xE0 || lead == 0xE0 || lead == 0xED) break;
    if (!isContinuation(at[1]) || !isContinuation(at[2])) break;
  }
  return at;
}

bool isValidUtf8(const std::string& text) {
  namespace utf = boost::locale::utf;
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); at != end;) {
    const char* const begin = at;
    at = endOfTriples(endOfAscii(at, end), end);
    if (at != begin) continue;
    const utf::code_point point = utf::utf_traits<char>::decode(at, end);
    if (point == utf::illegal || point == utf::incomplete) return false;
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
