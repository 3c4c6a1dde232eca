#include "base/system_text.h"

#include <boost/locale/encoding.hpp>
#include <utility>

#include "base/NeverDestroyed.h"
#include "base/code_page.h"
#include "base/utf8.h"

namespace libvarrow::base {

namespace {

namespace conv = boost::locale::conv;

constexpr const char* kUtf8 = "UTF-8";

// Returns the converter's name of the encoding, which it does not always know by its number.
const std::string& encoding() {
  static NeverDestroyed<const std::string> name(codePageName() == "CP65001" ? kUtf8
                                                : codePageName() == "CP950" ? "Big5"
                                                                            : codePageName());
  return *name;
}

bool isUtf8System() {
  static const bool isUtf8 = encoding() == kUtf8;
  return isUtf8;
}

bool isAscii(const std::string& text) {
  const auto* const begin = reinterpret_cast<const unsigned char*>(text.data());
  return endOfAscii(begin, begin + text.size()) == begin + text.size();
}

using Convert = std::string(const std::string& text, const std::string& charset, conv::method_type);

// Returns the text itself when the converter does not know the encoding: a text that is hard to
// read is better than an error about another one.
std::string convertedBy(Convert* convert, const std::string& text) {
  try {
    return convert(text, encoding(), conv::default_method);
  } catch (const conv::invalid_charset_error&) {
    return text;
  }
}

// Returns a text with "%E6" in place of a byte that is not ASCII.
std::string escaped(const std::string& text) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string ascii;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      ascii += c;
    } else {
      ascii.append({'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]});
    }
  }
  return ascii;
}

}  // namespace

const std::string& codePageName() {
  static NeverDestroyed<const std::string> name(systemCodePageName());
  return *name;
}

bool isSameInUtf8(const std::string& text) {
  return isUtf8System() ? isValidUtf8(text) : isAscii(text);
}

std::string fromUtf8(const std::string& utf8) {
  return isSameInUtf8(utf8) ? utf8 : convertedBy(conv::from_utf<char>, utf8);
}

std::string toUtf8(const std::string& text) {
  return isSameInUtf8(text) ? text : convertedBy(conv::to_utf<char>, text);
}

std::string systemText(std::string text) {
  if (isUtf8System() || isAscii(text) || !isValidUtf8(text)) return text;
  return convertedBy(conv::from_utf<char>, text);
}

std::string utf8OfSystem(std::string text) {
  if (isUtf8System() || isAscii(text)) return text;
  return convertedBy(conv::to_utf<char>, text);
}

std::string utf8Text(std::string text) {
  if (isValidUtf8(text)) return text;
  return utf8OfSystem(std::move(text));
}

std::string systemName(std::string name) {
  if (isUtf8System() || isAscii(name) || !isValidUtf8(name)) return name;
  std::string converted = fromUtf8(name);
  if (converted != name && toUtf8(converted) == name) return converted;
  const std::string misread = toUtf8(name);
  // Else the system would read some of the bytes as "?", which no file may have in its name.
  return misread != name && fromUtf8(misread) == name ? name : escaped(name);
}

}  // namespace libvarrow::base
