#include "base/readable_json.h"

#include <cmath>
#include <string_view>

#include "base/json_text.h"
#include "base/number_text.h"
#include "base/utf8.h"

namespace libvarrow::base::readable_json {

namespace {

constexpr std::size_t kLineLength = 80;

void appendEscaped(std::string& text, unsigned char c) {
  constexpr char kDigits[] = "0123456789abcdef";
  if (c == '"' || c == '\\') {
    text += '\\';
    text += static_cast<char>(c);
  } else if (c == '\n') {
    text += "\\n";
  } else if (c >= 0x80) {
    text += "\\ufffd";  // not UTF-8
  } else {
    text += "\\u00";
    text += kDigits[c >> 4];
    text += kDigits[c & 15];
  }
}

std::string quoted(const char* text, const char* textEnd) {
  std::string made = "\"";
  const auto* at = reinterpret_cast<const unsigned char*>(text);
  const auto* const end = reinterpret_cast<const unsigned char*>(textEnd);
  while (at != end) {
    const bool isPlain = *at >= 0x20 && *at < 0x7F && *at != '"' && *at != '\\';
    const unsigned char* next = isPlain ? at + 1 : endOfUtf8Character(at, end);
    if (next == nullptr) {
      appendEscaped(made, *at);
      next = at + 1;
    } else {
      made.append(at, next);
    }
    at = next;
  }
  return made + '"';
}

std::string quoted(const std::string& text) {
  return quoted(text.data(), text.data() + text.size());
}

std::string scalarText(const Json::Value& value) {
  const char* begin = nullptr;
  const char* end = nullptr;
  if (value.getString(&begin, &end)) return quoted(begin, end);
  if (value.type() != Json::realValue) return json_text::onOneLine(value);
  const double number = value.asDouble();
  return std::isnan(number) ? "NaN" : number_text::shortest(number);
}

// Writes members and elements, each by `write` after its separator.
template <class Write>
std::string joined(const Json::Value& value, const std::string& separator, const Write& write) {
  std::string text;
  for (auto member = value.begin(); member != value.end(); ++member) {
    if (!text.empty()) text += separator;
    if (value.isObject()) text += quoted(member.name()) + ": ";
    text += write(*member);
  }
  return text;
}

std::string enclosed(const Json::Value& value, const std::string& content) {
  return value.isObject() ? "{" + content + "}" : "[" + content + "]";
}

bool isContainer(const Json::Value& value) {
  return value.isArray() || value.isObject();
}

std::string indentedText(const Json::Value& value, std::size_t depth) {
  std::string line = onOneLine(value);
  if (!isContainer(value) || 2 * depth + line.size() < kLineLength) return line;
  const std::string lineEnd = "\n" + std::string(2 * depth, ' ');
  const auto write = [&](const Json::Value& member) { return indentedText(member, depth + 1); };
  const std::string content = joined(value, "," + lineEnd + "  ", write);
  return enclosed(value, lineEnd + "  " + content + lineEnd);
}

}  // namespace

std::string onOneLine(const Json::Value& value) {
  if (!isContainer(value)) return scalarText(value);
  return enclosed(value, joined(value, ", ", onOneLine));
}

std::string indented(const Json::Value& value) {
  return indentedText(value, 0) + "\n";
}

}  // namespace libvarrow::base::readable_json
