// The tokens of JSON text, read as the parser reads them, with their places.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace libvarrow::base {

enum class JsonTokenKind : unsigned char {
  ObjectBegin,
  ObjectEnd,
  ArrayBegin,
  ArrayEnd,
  Comma,
  Colon,
  String,
  EscapedString,  // with at least one backslash
  OtherScalar,    // a number, true, false or null
  Comment,
  Other,  // the end of the text, or bytes that form no token
};

struct JsonToken {
  JsonTokenKind kind;
  std::size_t begin;
  std::size_t end;
};

/// Splits text that is valid for the parser into the same tokens, comments included. Of other text
/// each token is at least one byte, until the end. Refers to the text.
class JsonTokens {
 public:
  JsonTokens(std::string_view text, std::size_t begin) : text_(text), at_(begin) {}

  /// Returns the next token, which may be a comment.
  JsonToken next();
  /// Returns the next token that is not a comment.
  JsonToken nextAfterComments();

 private:
  bool isAt(char c) const { return at_ < text_.size() && text_[at_] == c; }
  JsonTokenKind read();
  JsonTokenKind readString();
  JsonTokenKind readNumber();
  JsonTokenKind readLiteral(std::string_view rest);
  JsonTokenKind readComment();
  void skipDigits();

  std::string_view text_;
  std::size_t at_;
};

/// Decodes `text`, a string token without its quotes, into `decoded`. Returns false when it has an
/// escape sequence that the parser rejects.
bool unescapeJson(std::string_view text, std::string& decoded);

}  // namespace libvarrow::base
