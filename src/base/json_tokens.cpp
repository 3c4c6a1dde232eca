#include "base/json_tokens.h"

#include <algorithm>
#include <charconv>

namespace libvarrow::base {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Reads four hexadecimal digits at `at` and moves it after them.
bool readHex(std::string_view text, std::size_t& at, unsigned& code) {
  const std::string_view digits = text.substr(at, 4);
  const char* const end = digits.data() + digits.size();
  at += digits.size();
  return digits.size() == 4 && std::from_chars(digits.data(), end, code, 16).ptr == end;
}

// Reads a character after "\u". Like the parser, it combines a high surrogate with any escape that
// follows, and accepts a low surrogate alone.
bool readCodePoint(std::string_view text, std::size_t& at, unsigned& code) {
  if (!readHex(text, at, code)) return false;
  if (code < 0xD800 || code > 0xDBFF) return true;
  if (text.substr(at, 2) != "\\u") return false;
  at += 2;
  unsigned low = 0;
  if (!readHex(text, at, low)) return false;
  code = 0x10000 + ((code & 0x3FF) << 10) + (low & 0x3FF);
  return true;
}

void appendByte(unsigned byte, std::string& out) {
  out += static_cast<char>(static_cast<unsigned char>(byte));
}

void appendUtf8(unsigned code, std::string& out) {
  if (code < 0x80) return appendByte(code, out);
  if (code < 0x800) {
    appendByte(0xC0 | (code >> 6), out);
  } else {
    if (code < 0x10000) {
      appendByte(0xE0 | (code >> 12), out);
    } else {
      appendByte(0xF0 | (code >> 18), out);
      appendByte(0x80 | ((code >> 12) & 0x3F), out);
    }
    appendByte(0x80 | ((code >> 6) & 0x3F), out);
  }
  appendByte(0x80 | (code & 0x3F), out);
}

}  // namespace

JsonToken JsonTokens::next() {
  while (at_ < text_.size()) {
    const char c = text_[at_];
    if (c != ' ' && c != '\n' && c != '\r' && c != '\t') break;
    ++at_;
  }
  const std::size_t begin = at_;
  const JsonTokenKind kind = read();
  return {kind, begin, at_};
}

JsonToken JsonTokens::nextAfterComments() {
  for (;;) {
    const JsonToken token = next();
    if (token.kind != JsonTokenKind::Comment) return token;
  }
}

JsonTokenKind JsonTokens::read() {
  if (at_ == text_.size()) return JsonTokenKind::Other;
  const char c = text_[at_++];
  switch (c) {
    case '{':
      return JsonTokenKind::ObjectBegin;
    case '}':
      return JsonTokenKind::ObjectEnd;
    case '[':
      return JsonTokenKind::ArrayBegin;
    case ']':
      return JsonTokenKind::ArrayEnd;
    case ',':
      return JsonTokenKind::Comma;
    case ':':
      return JsonTokenKind::Colon;
    case '"':
      return readString();
    case '/':
      return readComment();
    case 't':
      return readLiteral("rue");
    case 'f':
      return readLiteral("alse");
    case 'n':
      return readLiteral("ull");
    default:
      return c == '-' || isDigit(c) ? readNumber() : JsonTokenKind::Other;
  }
}

JsonTokenKind JsonTokens::readString() {
  JsonTokenKind kind = JsonTokenKind::String;
  while (at_ < text_.size()) {
    const char c = text_[at_++];
    if (c == '"') return kind;
    if (c != '\\') continue;
    kind = JsonTokenKind::EscapedString;
    if (at_ < text_.size()) ++at_;
  }
  return JsonTokenKind::Other;
}

// The parser finds numbers by these parts alone. It checks them later, when it converts them.
JsonTokenKind JsonTokens::readNumber() {
  skipDigits();
  if (isAt('.')) {
    ++at_;
    skipDigits();
  }
  if (isAt('e') || isAt('E')) {
    ++at_;
    if (isAt('+') || isAt('-')) ++at_;
    skipDigits();
  }
  return JsonTokenKind::OtherScalar;
}

void JsonTokens::skipDigits() {
  while (at_ < text_.size() && isDigit(text_[at_])) ++at_;
}

JsonTokenKind JsonTokens::readLiteral(std::string_view rest) {
  if (text_.substr(at_, rest.size()) != rest) return JsonTokenKind::Other;
  at_ += rest.size();
  return JsonTokenKind::OtherScalar;
}

JsonTokenKind JsonTokens::readComment() {
  const char c = at_ < text_.size() ? text_[at_++] : '\0';
  if (c == '/') {
    at_ = std::min(text_.find_first_of("\r\n", at_), text_.size());
    return JsonTokenKind::Comment;
  }
  if (c != '*') return JsonTokenKind::Other;
  const std::size_t end = text_.find("*/", at_);
  at_ = end == std::string_view::npos ? text_.size() : end + 2;
  return end == std::string_view::npos ? JsonTokenKind::Other : JsonTokenKind::Comment;
}

bool unescapeJson(std::string_view text, std::string& decoded) {
  decoded.clear();
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at++];
    if (c != '\\') {
      decoded += c;
      continue;
    }
    const char escape = at < text.size() ? text[at++] : '\0';
    constexpr std::string_view kEscapes = "\"/\\bfnrt";
    constexpr std::string_view kMeanings = "\"/\\\b\f\n\r\t";
    const std::size_t known = kEscapes.find(escape);
    unsigned code = 0;
    if (known != std::string_view::npos) {
      decoded += kMeanings[known];
    } else if (escape == 'u' && readCodePoint(text, at, code)) {
      appendUtf8(code, decoded);
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace libvarrow::base
