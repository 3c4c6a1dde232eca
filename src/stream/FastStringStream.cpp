#include "libvarrow/stream/FastStringStream.h"

#include <charconv>

#include "base/time_text.h"
#include "libvarrow/backtrace/Check.h"

namespace libvarrow {

namespace {

constexpr std::size_t kNumberLength = 49;

template <class... Arguments>
void appendNumber(std::string& text, Arguments... arguments) {
  char digits[kNumberLength];
  const std::to_chars_result result = std::to_chars(digits, digits + kNumberLength, arguments...);
  LIBVARROW_CHECK(result.ec == std::errc());
  text.append(digits, result.ptr);
}

template <class T>
void appendTime(std::string& text, const T& value) {
  char buffer[base::time_text::kMaxLength];
  text.append(buffer, base::time_text::write(buffer, value));
}

// The precisions with which lexical_cast writes.
constexpr int kFloatDigits = 9;
constexpr int kDoubleDigits = 17;
constexpr int kLongDoubleDigits = 21;

}  // namespace

FastStringStream& FastStringStream::operator<<(char value) {
  text_ += value;
  return *this;
}

FastStringStream& FastStringStream::operator<<(signed char value) {
  return *this << static_cast<char>(value);
}

FastStringStream& FastStringStream::operator<<(unsigned char value) {
  return *this << static_cast<char>(value);
}

FastStringStream& FastStringStream::operator<<(int value) {
  appendNumber(text_, value);
  return *this;
}

FastStringStream& FastStringStream::operator<<(unsigned int value) {
  appendNumber(text_, value);
  return *this;
}

FastStringStream& FastStringStream::operator<<(long value) {
  appendNumber(text_, value);
  return *this;
}

FastStringStream& FastStringStream::operator<<(unsigned long value) {
  appendNumber(text_, value);
  return *this;
}

FastStringStream& FastStringStream::operator<<(long long value) {
  appendNumber(text_, value);
  return *this;
}

FastStringStream& FastStringStream::operator<<(unsigned long long value) {
  appendNumber(text_, value);
  return *this;
}

FastStringStream& FastStringStream::operator<<(float value) {
  appendNumber(text_, value, std::chars_format::general, kFloatDigits);
  return *this;
}

FastStringStream& FastStringStream::operator<<(double value) {
  appendNumber(text_, value, std::chars_format::general, kDoubleDigits);
  return *this;
}

FastStringStream& FastStringStream::operator<<(long double value) {
  appendNumber(text_, value, std::chars_format::general, kLongDoubleDigits);
  return *this;
}

FastStringStream& FastStringStream::operator<<(const char* value) {
  text_ += value;
  return *this;
}

FastStringStream& FastStringStream::operator<<(const std::string& value) {
  text_ += value;
  return *this;
}

FastStringStream& FastStringStream::operator<<(bool value) {
  text_.append(value ? "true" : "false", value ? 4 : 5);
  return *this;
}

FastStringStream& FastStringStream::operator<<(const boost::gregorian::date& value) {
  appendTime(text_, value);
  return *this;
}

FastStringStream& FastStringStream::operator<<(const boost::posix_time::ptime& value) {
  appendTime(text_, value);
  return *this;
}

FastStringStream& FastStringStream::operator<<(const boost::posix_time::time_duration& value) {
  appendTime(text_, value);
  return *this;
}

}  // namespace libvarrow
