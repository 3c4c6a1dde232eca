#include "host/page/script_json.h"

#include "base/utf8.h"

namespace libvarrow::host {

namespace {

bool isOfHtml(unsigned char c) {
  return c == '<' || c == '>' || c == '&';
}

// Returns true for most characters: those that are copied inside and outside of strings.
bool isPlain(unsigned char c) {
  return c > ' ' && c < 0x80 && c != '"' && c != '\\' && !isOfHtml(c);
}

void appendEscape(std::string& html, unsigned char c) {
  constexpr const char* kDigits = "0123456789abcdef";
  html.append("\\u00").append(1, kDigits[c >> 4U]).append(1, kDigits[c & 15U]);
}

class Copier {
 public:
  Copier(std::string& html, std::string_view json)
      : html_(html),
        at_(reinterpret_cast<const unsigned char*>(json.data())),
        end_(at_ + json.size()) {}

  void copy() {
    while (at_ < end_) {
      if (isPlain(*at_)) {
        copyPlain();
      } else if (*at_ >= 0x80) {
        copyCharacter();
      } else if (*at_ == '\\' && at_ + 1 < end_ && (isPlain(at_[1]) || isQuoteOrSlash(at_[1]))) {
        append(at_ + 2);  // the quote does not end the string
      } else {
        copySpecial();
      }
    }
  }

 private:
  static bool isQuoteOrSlash(unsigned char c) { return c == '"' || c == '\\'; }

  void append(const unsigned char* end) {
    html_.append(reinterpret_cast<const char*>(at_), reinterpret_cast<const char*>(end));
    at_ = end;
  }

  void copyPlain() {
    const unsigned char* end = at_;
    while (end < end_ && isPlain(*end)) ++end;
    append(end);
  }

  void copyCharacter() {
    const unsigned char* const end = base::endOfUtf8Character(at_, end_);
    if (end != nullptr) return append(end);
    html_ += "\xEF\xBF\xBD";
    ++at_;
  }

  void copySpecial() {
    const unsigned char c = *at_++;
    if (c == '"') isInString_ = !isInString_;
    const bool isControl = c < ' ';
    if (isOfHtml(c) || (isControl && isInString_)) {
      appendEscape(html_, c);
    } else if (isInString_ || (c != ' ' && !isControl)) {
      html_ += static_cast<char>(c);
    }
  }

  std::string& html_;
  const unsigned char* at_;
  const unsigned char* const end_;
  bool isInString_ = false;
};

}  // namespace

void appendScriptJson(std::string& html, std::string_view json) {
  Copier(html, json).copy();
}

}  // namespace libvarrow::host
