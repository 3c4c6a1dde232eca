#include "host/page/script_json.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/utf8.h"

namespace libvarrow::host {

namespace {

// The page takes those up to Plain as they are.
enum class Kind : unsigned char { Quote, Backslash, Plain, Space, Control, Html, NotAscii };

constexpr Kind kindOf(unsigned char c) {
  if (c == ' ') return Kind::Space;
  if (c < ' ') return Kind::Control;
  if (c == '"') return Kind::Quote;
  if (c == '\\') return Kind::Backslash;
  if (c == '<' || c == '>' || c == '&') return Kind::Html;
  return c < 0x80 ? Kind::Plain : Kind::NotAscii;
}

using Kinds = std::array<Kind, 256>;

// Returns the kinds of all bytes, as the data of a run may be long.
constexpr Kinds kindsOfBytes() {
  Kinds kinds{};
  for (std::size_t c = 0; c < kinds.size(); ++c) kinds[c] = kindOf(static_cast<unsigned char>(c));
  return kinds;
}

constexpr Kinds kKinds = kindsOfBytes();

// Copies JSON in pieces, with a buffer that has room for the most that a piece can need.
class Copier {
 public:
  Copier(std::string& html, std::string_view json)
      : html_(html),
        at_(reinterpret_cast<const unsigned char*>(json.data())),
        end_(at_ + json.size()) {}

  void copy() {
    while (at_ < end_) {
      copyPiece(std::min<std::size_t>(kPiece, static_cast<std::size_t>(end_ - at_)));
    }
  }

 private:
  static constexpr std::size_t kPiece = 512;
  static constexpr std::size_t kMostPerByte = 6;

  // Copies `size` bytes, and the rest of a character or escape that begins in them.
  void copyPiece(std::size_t size) {
    to_ = buffer_.data();
    for (const unsigned char* const end = at_ + size; at_ < end;) {
      if (isInString_) {
        copyString(end);
      } else {
        copyTokens(end);
      }
      if (at_ < end) copyNext(kKinds[*at_]);
    }
    html_.append(buffer_.data(), static_cast<std::size_t>(to_ - buffer_.data()));
  }

  // Local variables stay in registers, as opposed to members, which a written byte could change.
  void copyString(const unsigned char* end) {
    const unsigned char* at = at_;
    char* to = to_;
    while (at < end && (kKinds[*at] == Kind::Plain || kKinds[*at] == Kind::Space)) {
      *to++ = static_cast<char>(*at++);
    }
    at_ = at;
    to_ = to;
  }

  void copyTokens(const unsigned char* end) {
    const unsigned char* at = at_;
    char* to = to_;
    while (at < end) {
      if (*at <= ' ') {
        ++at;
      } else if (kKinds[*at] == Kind::Plain) {
        *to++ = static_cast<char>(*at++);
      } else {
        break;
      }
    }
    at_ = at;
    to_ = to;
  }

  void copyNext(Kind kind) {
    if (kind == Kind::Quote) {
      isInString_ = !isInString_;
      *to_++ = static_cast<char>(*at_++);
      return;
    }
    if (kind == Kind::NotAscii) return copyCharacter();
    if (kind == Kind::Html || kind == Kind::Control) return copyEscaped();
    copyBytes(at_ + 1);
    // The character after a backslash does not end the string.
    if (kind == Kind::Backslash && at_ < end_ && (*at_ == '"' || *at_ == '\\')) copyBytes(at_ + 1);
  }

  void copyCharacter() {
    const unsigned char* const end = base::endOfUtf8Character(at_, end_);
    if (end != nullptr) return copyBytes(end);
    for (const char byte : {'\xEF', '\xBF', '\xBD'}) *to_++ = byte;
    ++at_;
  }

  void copyEscaped() {
    constexpr const char* kDigits = "0123456789abcdef";
    for (const char c : {'\\', 'u', '0', '0', kDigits[*at_ >> 4U], kDigits[*at_ & 15U]}) *to_++ = c;
    ++at_;
  }

  void copyBytes(const unsigned char* end) {
    while (at_ < end) *to_++ = static_cast<char>(*at_++);
  }

  std::string& html_;
  const unsigned char* at_;
  const unsigned char* const end_;
  std::array<char, (kPiece + 4) * kMostPerByte> buffer_;  // not initialised
  char* to_ = nullptr;
  bool isInString_ = false;
};

// Returns true for JSON that the page takes as it is, such as most lines of the steps.
bool isUnchanged(std::string_view json) {
  return std::all_of(json.begin(), json.end(),
                     [](char c) { return kKinds[static_cast<unsigned char>(c)] <= Kind::Plain; });
}

}  // namespace

void appendScriptJson(std::string& html, std::string_view json) {
  if (isUnchanged(json)) {
    html += json;
  } else {
    Copier(html, json).copy();
  }
}

}  // namespace libvarrow::host
