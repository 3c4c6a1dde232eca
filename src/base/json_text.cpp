#include "base/json_text.h"

#include <json/reader.h>
#include <json/writer.h>

#include <locale>
#include <new>
#include <ostream>
#include <streambuf>
#include <string_view>
#include <utility>

#include "base/ClassicNumbers.h"
#include "base/DecimalPoints.h"
#include "base/out_of_memory.h"
#include "base/thread_local_object.h"
#include "base/utf8.h"

#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#elif defined(_MSC_VER)
#pragma warning(disable : 4996)
#endif

namespace libvarrow::base::json_text {

namespace {

// A stream buffer that collects the output in a string.
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
// By default a stream catches such exceptions and only enters a failed state.
class StreamRedirection {
 public:
  StreamRedirection(std::ostream& out, std::streambuf& sink) : out_(out) {
    out_.rdbuf(&sink);
    out_.exceptions(std::ios_base::badbit);
  }
  ~StreamRedirection() {
    out_.exceptions(std::ios_base::goodbit);
    out_.rdbuf(nullptr);
  }
  StreamRedirection(const StreamRedirection&) = delete;
  StreamRedirection& operator=(const StreamRedirection&) = delete;

 private:
  std::ostream& out_;
};

bool globalLocaleWritesPlainNumbers() {
  const auto& numbers = std::use_facet<std::numpunct<char>>(std::locale());
  return numbers.decimal_point() == '.' && numbers.grouping().empty();
}

bool parsePlain(std::string_view text, Json::Value& value, std::string& errors, Comments comments) {
  Json::Reader reader;
  try {
    const bool isCollecting = comments == Comments::Collected;
    const bool isParsed = reader.parse(text.data(), text.data() + text.size(), value, isCollecting);
    if (!isParsed) errors = reader.getFormattedErrorMessages();
    return isParsed;
  } catch (const Json::Exception& error) {
    // Too deep nesting is an error of the text; exhausted memory is not.
    if (isOutOfMemory(error)) throw std::bad_alloc();
    errors = error.what();
    return false;
  }
}

}  // namespace

bool parse(const std::string& text, Json::Value& value, std::string& errors, Comments comments) {
  const std::size_t begin = byteOrderMarkLength(text);
  if (globalLocaleWritesPlainNumbers()) {
    return parsePlain(std::string_view(text).substr(begin), value, errors, comments);
  }
  const WithoutDecimalPoints rewritten(text.substr(begin));
  if (parsePlain(rewritten.text(), value, errors, comments)) return true;
  errors = rewritten.aboutOriginal(errors);
  return false;
}

// The writers print numbers in the thread's C locale and correct only a decimal comma.
std::string styled(const Json::Value& value, const std::string& indentation) {
  [[maybe_unused]] const ClassicNumbers classicNumbers{};
  StringSink sink;
  // Keeps one stream per thread, because constructing one costs more than writing a short text.
  withThreadLocal([] { return std::ostream(nullptr); },
                  [&](std::ostream& out) {
                    const StreamRedirection redirection(out, sink);
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

}  // namespace libvarrow::base::json_text
