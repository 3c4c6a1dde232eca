#include "host/records/json_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/json_text.h"
#include "base/number_text.h"

namespace libvarrow::host {

namespace {

bool isPlain(char c) {
  return c >= ' ' && c <= '~' && c != '"' && c != '\\';
}

// JSON has no infinite numbers; readers refuse those that the JSON library writes.
std::string numberText(double number) {
  const std::string text = base::number_text::shortest(number);
  return std::isfinite(number) ? text : '"' + text + '"';
}

void appendElementsOf(std::string& json, const Json::Value& value, int depth) {
  bool isFirst = true;
  for (auto element = value.begin(); element != value.end(); ++element) {
    if (!isFirst) json += ',';
    isFirst = false;
    if (depth > 0) json += '\n';
    if (value.isObject()) {
      const char* end = nullptr;
      const char* const name = element.memberName(&end);
      appendJson(json, std::string_view(name, static_cast<std::size_t>(end - name)));
      json += ':';
    }
    appendJson(json, *element, depth - 1);
  }
}

}  // namespace

void appendJson(std::string& json, std::string_view text) {
  if (!std::all_of(text.begin(), text.end(), isPlain)) {
    json += base::json_text::onOneLine(Json::Value(std::string(text)));
    return;
  }
  json += '"';
  json += text;
  json += '"';
}

void appendJson(std::string& json, std::uint64_t number) {
  std::array<char, 20> digits{};
  char* const end = std::to_chars(digits.begin(), digits.end(), number).ptr;
  json.append(digits.data(), end);
}

void appendJson(std::string& json, std::chrono::nanoseconds time) {
  const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(time);
  const auto count = static_cast<std::uint64_t>(std::max<std::int64_t>(0, micros.count()));
  appendJson(json, count / 1'000'000);
  const std::size_t point = json.size();
  appendJson(json, 1'000'000 + count % 1'000'000);
  json[point] = '.';
}

void appendJson(std::string& json, const Json::Value& value, int depth) {
  const char* begin = nullptr;
  const char* end = nullptr;
  if (value.isArray() || value.isObject()) {
    json += value.isArray() ? '[' : '{';
    appendElementsOf(json, value, depth);
    json += value.isArray() ? ']' : '}';
  } else if (value.isString() && value.getString(&begin, &end)) {
    appendJson(json, std::string_view(begin, static_cast<std::size_t>(end - begin)));
  } else if (value.type() == Json::realValue) {
    json += numberText(value.asDouble());
  } else {
    json += value.isNull() ? "null" : value.asString();
  }
}

}  // namespace libvarrow::host
