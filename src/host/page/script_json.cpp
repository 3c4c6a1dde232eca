#include "host/page/script_json.h"

#include "base/utf8.h"

namespace libvarrow::host {

namespace {

bool isBlank(unsigned char c) {
  return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

// Returns the escape of a character that HTML may interpret; null for any other.
const char* escapeOf(unsigned char c) {
  if (c == '<') return "\\u003c";
  if (c == '>') return "\\u003e";
  return c == '&' ? "\\u0026" : nullptr;
}

// Returns the end of the text from `at` that is copied as it is.
const unsigned char* endOfPlain(const unsigned char* at, const unsigned char* end, bool inString) {
  while (at < end && *at < 0x80 && *at != '"' && *at != '\\' && escapeOf(*at) == nullptr &&
         (inString || !isBlank(*at))) {
    ++at;
  }
  return at;
}

const char* charsOf(const unsigned char* bytes) {
  return reinterpret_cast<const char*>(bytes);
}

}  // namespace

void appendScriptJson(std::string& html, std::string_view json) {
  constexpr const char* kReplacement = "\xEF\xBF\xBD";
  const auto* at = reinterpret_cast<const unsigned char*>(json.data());
  const auto* const end = at + json.size();
  bool inString = false;
  while (at < end) {
    const auto* const plain = endOfPlain(at, end, inString);
    html.append(charsOf(at), charsOf(plain));
    at = plain;
    if (at == end) return;
    if (*at == '\\' && end - at > 1 && at[1] < 0x80 && escapeOf(at[1]) == nullptr) {
      html.append(charsOf(at), 2);  // the next character does not end the string
      at += 2;
    } else if (*at >= 0x80) {
      const auto* const next = base::endOfUtf8Character(at, end);
      if (next == nullptr)
        html += kReplacement;
      else
        html.append(charsOf(at), charsOf(next));
      at = next == nullptr ? at + 1 : next;
    } else {
      if (*at == '"') inString = !inString;
      const char* const escape = escapeOf(*at);
      if (escape != nullptr)
        html += escape;
      else if (inString || !isBlank(*at))
        html += static_cast<char>(*at);
      ++at;
    }
  }
}

}  // namespace libvarrow::host
