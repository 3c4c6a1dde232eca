#include "JsonText.h"

#include <json/reader.h>
#include <json/writer.h>

#include <algorithm>
#include <locale>
#include <ostream>
#include <streambuf>
#include <utility>

#include "ClassicNumbers.h"
#include "ThreadsOwn.h"

#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#elif defined(_MSC_VER)
#pragma warning(disable : 4996)
#endif

namespace cppbind::json_text {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

std::size_t endOfDigits(const std::string& text, std::size_t at) {
  while (at < text.size() && isDigit(text[at])) ++at;
  return at;
}

std::size_t endOfString(const std::string& text, std::size_t at) {
  const char quote = text[at++];
  while (at < text.size() && text[at] != quote) at += text[at] == '\\' ? 2 : 1;
  return std::min(at + 1, text.size());
}

std::size_t endOfComment(const std::string& text, std::size_t at) {
  const bool isBlock = text.compare(at, 2, "/*") == 0;
  const std::size_t end = isBlock ? text.find("*/", at + 2) : text.find_first_of("\r\n", at + 2);
  return end == std::string::npos ? text.size() : end + (isBlock ? 2 : 1);
}

// The exponent whose digits stand from `at` to `end`.
long exponentIn(const std::string& text, std::size_t at, std::size_t end) {
  const std::size_t significant = std::min(text.find_first_not_of('0', at), end);
  // More digits than nine are out of any number's range, whatever they are.
  return std::stol("0" + text.substr(significant, std::min<std::size_t>(end - significant, 9)));
}

// Where the digits of an exponent begin, with its letter at `at`.
std::size_t beginOfExponent(const std::string& text, std::size_t at) {
  const bool hasSign = at + 1 < text.size() && (text[at + 1] == '-' || text[at + 1] == '+');
  return at + (hasSign ? 2 : 1);
}

// 12.50e3 as 1250e1: the same number, to the last bit, without a decimal point. Reads as far as the
// parser does, so that what it refuses is not made a number.
std::size_t appendNumber(const std::string& text, std::size_t at, std::string& out) {
  const std::size_t point = endOfDigits(text, at + (text[at] == '-' ? 1 : 0));
  const bool hasPoint = point < text.size() && text[point] == '.';
  const std::size_t letter = hasPoint ? endOfDigits(text, point + 1) : point;
  const bool hasExponent = letter < text.size() && (text[letter] == 'e' || text[letter] == 'E');
  const std::size_t digits = hasExponent ? beginOfExponent(text, letter) : letter;
  const std::size_t end = endOfDigits(text, digits);
  out.append(text, at, point - at);
  if (!hasPoint || (hasExponent && digits == end)) {
    const std::size_t rest = point + (hasPoint ? 1 : 0);
    out.append(text, rest, end - rest);
    return end;
  }
  out.append(text, point + 1, letter - point - 1);
  long exponent = -static_cast<long>(letter - point - 1);
  if (hasExponent) exponent += (text[digits - 1] == '-' ? -1 : 1) * exponentIn(text, digits, end);
  out += 'e' + std::to_string(exponent);
  return end;
}

// The parser reads numbers through a stream of the global locale, which may want a decimal comma.
std::string withoutDecimalPoints(const std::string& text) {
  std::string out;
  out.reserve(text.size() + text.size() / 8);
  for (std::size_t at = 0; at < text.size();) {
    std::size_t next = at + 1;
    if (text[at] == '-' || isDigit(text[at])) {
      at = appendNumber(text, at, out);
      continue;
    }
    if (text[at] == '"') {
      next = endOfString(text, at);
    } else if (text[at] == '/') {
      next = endOfComment(text, at);
    }
    out.append(text, at, next - at);
    at = next;
  }
  return out;
}

// What is written into a stream, as a string.
class StringSink : public std::streambuf {
 public:
  std::string text;

 protected:
  int_type overflow(int_type c) override {
    if (!traits_type::eq_int_type(c, traits_type::eof())) text += traits_type::to_char_type(c);
    return traits_type::not_eof(c);
  }
  std::streamsize xsputn(const char* characters, std::streamsize count) override {
    text.append(characters, static_cast<std::size_t>(count));
    return count;
  }
};

// RAII guard: `out` writes into `sink`, and an exception of the sink reaches the writer's caller.
// By default a stream catches it and only remembers that it failed.
class Redirected {
 public:
  Redirected(std::ostream& out, std::streambuf& sink) : out_(out) {
    out_.rdbuf(&sink);
    out_.exceptions(std::ios_base::badbit);
  }
  ~Redirected() {
    out_.exceptions(std::ios_base::goodbit);
    out_.rdbuf(nullptr);
  }
  Redirected(const Redirected&) = delete;
  Redirected& operator=(const Redirected&) = delete;

 private:
  std::ostream& out_;
};

bool globalLocaleWritesPlainNumbers() {
  const auto& numbers = std::use_facet<std::numpunct<char>>(std::locale());
  return numbers.decimal_point() == '.' && numbers.grouping().empty();
}

}  // namespace

bool parse(const std::string& text, Json::Value& value, std::string& errors, Comments comments) {
  Json::Reader reader;
  std::string rewritten;
  try {
    const std::string& numbers =
        globalLocaleWritesPlainNumbers() ? text : (rewritten = withoutDecimalPoints(text));
    // Editors on some systems put a byte order mark in front.
    const std::size_t begin = numbers.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    const char* const first = numbers.data();
    const bool parsed =
        reader.parse(first + begin, first + numbers.size(), value, comments == Comments::Collected);
    if (!parsed) errors = reader.getFormattedErrorMessages();
    return parsed;
  } catch (const Json::Exception& tooDeep) {
    errors = tooDeep.what();
    return false;
  }
}

// The writers print numbers under the thread's C locale and mend nothing but a decimal comma.
std::string styled(const Json::Value& value, const std::string& indentation) {
  [[maybe_unused]] const ClassicNumbers classicNumbers{};
  StringSink sink;
  // Setting a stream up costs more than writing a short text.
  withThreadsOwn([] { return std::ostream(nullptr); },
                 [&](std::ostream& out) {
                   const Redirected redirected(out, sink);
                   Json::StyledStreamWriter(indentation).write(out, value);
                 });
  return std::move(sink.text);
}

std::string fast(const Json::Value& value) {
  [[maybe_unused]] const ClassicNumbers classicNumbers{};
  return Json::FastWriter().write(value);
}

std::string onOneLine(const Json::Value& value) {
  [[maybe_unused]] const ClassicNumbers classicNumbers{};
  Json::FastWriter writer;
  writer.omitEndingLineFeed();
  return writer.write(value);
}

}  // namespace cppbind::json_text
