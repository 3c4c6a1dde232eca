#include "base/DecimalPoints.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace libvarrow::base::json_text {

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

// Returns the exponent with the digits from `at` to `end`.
long exponentIn(const std::string& text, std::size_t at, std::size_t end) {
  const std::size_t significant = std::min(text.find_first_not_of('0', at), end);
  // More than nine digits are always out of range.
  return std::stol("0" + text.substr(significant, std::min<std::size_t>(end - significant, 9)));
}

// Returns the position of the first digit of the exponent whose letter is at `at`.
std::size_t beginOfExponent(const std::string& text, std::size_t at) {
  const bool hasSign = at + 1 < text.size() && (text[at + 1] == '-' || text[at + 1] == '+');
  return at + (hasSign ? 2 : 1);
}

// Appends the number at `at` without its point and returns its end. Reads as far as the parser
// does, so that text which the parser rejects does not become a number.
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

// Returns the begins of lines as the parser counts them: with the line ends of any system.
std::vector<std::size_t> beginsOfLines(const std::string& text) {
  std::vector<std::size_t> begins{0};
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool isPair = text.compare(at, 2, "\r\n") == 0;
    if (!isPair && (text[at] == '\r' || text[at] == '\n')) begins.push_back(at + 1);
  }
  return begins;
}

// Returns the position after the first `label` in `line`, or the line's end without one.
std::size_t placeAfter(const std::string& line, const std::string& label) {
  const std::size_t found = line.find(label);
  return found == std::string::npos ? line.size() : found + label.size();
}

std::size_t numberAt(const std::string& line, std::size_t at) {
  return std::strtoul(line.c_str() + at, nullptr, 10);
}

}  // namespace

WithoutDecimalPoints::WithoutDecimalPoints(std::string original) : original_(std::move(original)) {
  text_.reserve(original_.size() + original_.size() / 8);
  for (std::size_t at = 0; at < original_.size();) {
    std::size_t next = at + 1;
    if (original_[at] == '-' || isDigit(original_[at])) {
      const std::size_t newBegin = text_.size();
      next = appendNumber(original_, at, text_);
      if (text_.compare(newBegin, std::string::npos, original_, at, next - at) != 0) {
        numbers_.push_back({at, next, newBegin, text_.size()});
      }
    } else {
      if (original_[at] == '"') next = endOfString(original_, at);
      if (original_[at] == '/') next = endOfComment(original_, at);
      text_.append(original_, at, next - at);
    }
    at = next;
  }
}

// Returns null when no number begins at or before `newPosition`.
const WithoutDecimalPoints::Number* WithoutDecimalPoints::lastNumberAt(
    std::size_t newPosition) const {
  const auto after = std::upper_bound(
      numbers_.begin(), numbers_.end(), newPosition,
      [](std::size_t position, const Number& number) { return position < number.newBegin; });
  return after == numbers_.begin() ? nullptr : &*std::prev(after);
}

std::size_t WithoutDecimalPoints::originalOf(std::size_t newPosition) const {
  const Number* number = lastNumberAt(newPosition);
  if (number == nullptr) return newPosition;
  if (newPosition >= number->newEnd) return newPosition - number->newEnd + number->end;
  return std::min(number->begin + (newPosition - number->newBegin), number->end);
}

std::string WithoutDecimalPoints::aboutOriginal(const std::string& messages) const {
  const std::vector<std::size_t> begins = beginsOfLines(text_);
  std::string out;
  const Number* named = nullptr;
  for (std::size_t at = 0; at < messages.size();) {
    const std::size_t end = std::min(messages.find('\n', at), messages.size() - 1) + 1;
    std::string line = messages.substr(at, end - at);
    at = end;
    // "* Line 3, Column 5" or "See Line 3, Column 7 for detail.", or an indented message.
    const std::size_t row = placeAfter(line, "Line "), column = placeAfter(line, ", Column ");
    if (line.front() != ' ' && column < line.size()) {
      const std::size_t begin = begins[std::min(numberAt(line, row), begins.size()) - 1];
      const std::size_t place = begin + numberAt(line, column) - 1;
      // Numbers are on one line, so only the column differs.
      line.replace(column, endOfDigits(line, column) - column,
                   std::to_string(originalOf(place) - originalOf(begin) + 1));
      named = lastNumberAt(place);
    } else if (named != nullptr) {
      nameOriginal(*named, line);
    }
    out += line;
  }
  return out;
}

// Replaces the number in a message such as "  '15e399' is not a number." by the original, 1.5e400.
void WithoutDecimalPoints::nameOriginal(const Number& number, std::string& message) const {
  const std::string name = text_.substr(number.newBegin, number.newEnd - number.newBegin);
  const std::size_t found = message.find("'" + name + "'");
  if (found == std::string::npos) return;
  message.replace(found + 1, name.size(), original_, number.begin, number.end - number.begin);
}

}  // namespace libvarrow::base::json_text
