#include "libvarrow/utility/UTFConverter.h"

#include <boost/locale/encoding.hpp>
#include <boost/locale/utf.hpp>
#include <cstdint>
#include <cstring>

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

bool isValidUtf8(const std::string& text) {
  namespace utf = boost::locale::utf;
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); (at = endOfAscii(at, end)) != end;) {
    const utf::code_point point = utf::utf_traits<char>::decode(at, end);
    if (point == utf::illegal || point == utf::incomplete) return false;
  }
  return true;
}

// Where both encodings are UTF-8, the converter would only leave out invalid bytes, at fifty times
// the cost of looking for them.
bool needsNoConversion(const std::string& text) {
  static const bool isUtf8 = codePageName() == "UTF-8";
  return isUtf8 && isValidUtf8(text);
}

}  // namespace

// Never destroyed, as a host's static objects may be older.
const std::string& codePageName() {
  static const auto* const name = new std::string(systemCodePageName());
  return *name;
}

std::string fromUtf8(const std::string& utf8) {
  return needsNoConversion(utf8) ? utf8 : boost::locale::conv::from_utf<char>(utf8, codePageName());
}

std::string toUtf8(const std::string& text) {
  return needsNoConversion(text) ? text : boost::locale::conv::to_utf<char>(text, codePageName());
}

}  // namespace libvarrow::utility
