#include "libvarrow/utility/UTFConverter.h"

#include <boost/locale/encoding.hpp>
#include <utility>

#include "base/NeverDestroyed.h"
#include "base/utf8.h"
#include "utility/utf8_text.h"

#if defined(_WIN32)
#include <windows.h>
#endif

namespace libvarrow::utility {

namespace {

constexpr const char* kUtf8 = "UTF-8";
constexpr const char* kUtf8CodePage = "CP65001";  // Windows' name, which the converter lacks

#if defined(_WIN32)
std::string systemCodePageName() {
  CPINFOEXA info;
  const UINT number = GetCPInfoExA(CP_ACP, 0, &info) ? info.CodePage : GetACP();
  return "CP" + std::to_string(number);
}
#else
std::string systemCodePageName() {
  return kUtf8;
}
#endif

// Returns the converter's name of the encoding of text in memory.
const std::string& encoding() {
  static base::NeverDestroyed<const std::string> name(
      codePageName() == kUtf8CodePage ? kUtf8 : codePageName());
  return *name;
}

}  // namespace

const std::string& codePageName() {
  static base::NeverDestroyed<const std::string> name(systemCodePageName());
  return *name;
}

bool isUtf8InMemory(const std::string& text) {
  static const bool isUtf8 = encoding() == kUtf8;
  return isUtf8 && base::isValidUtf8(text);
}

std::string fromUtf8(const std::string& utf8) {
  return isUtf8InMemory(utf8) ? utf8 : boost::locale::conv::from_utf<char>(utf8, encoding());
}

std::string fromUtf8(std::string&& utf8) {
  if (isUtf8InMemory(utf8)) return std::move(utf8);
  return boost::locale::conv::from_utf<char>(utf8, encoding());
}

std::string toUtf8(const std::string& text) {
  return isUtf8InMemory(text) ? text : boost::locale::conv::to_utf<char>(text, encoding());
}

}  // namespace libvarrow::utility
