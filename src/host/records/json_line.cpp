#include "host/records/json_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/json_text.h"
#include "base/number_text.h"

namespace libvarrow::host {

namespace {

constexpr std::array<bool, 256> charactersWithoutEscapes() {
  std::array<bool, 256> isPlain{};
  for (unsigned char c = ' '; c <= '~'; ++c) isPlain[c] = c != '"' && c != '\\';
  return isPlain;
}

bool isPlain(std::string_view text) {
  static constexpr std::array<bool, 256> kIsPlain = charactersWithoutEscapes();
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return kIsPlain[static_cast<unsigned char>(c)]; });
}

// JSON has no infinite numbers; readers refuse those that the JSON library writes.
std::string numberText(double number) {
  const std::string text = base::number_text::shortest(number);
  return std::isfinite(number) ? text : '"' + text + '"';
}

void appendElementsOf(std::string& json, const Json::Value& value, int depth) {
  bool isFirst = true;
  const bool isObject = value.isObject();
  const auto last = value.end();
  for (auto element = value.begin(); element != last; ++element) {
    if (!isFirst) json += ',';
    isFirst = false;
    if (depth > 0) json += '\n';
    if (isObject) {
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
  if (!isPlain(text)) {
    json += base::json_text::onOneLine(Json::Value(std::string(text)));
    return;
  }
  json += '"';
  json += text;
  json += '"';
}

void appendJson(std::string& json, std::uint64_t number) {
  std::array<char, 20> digits;  // not initialised
  char* const end = std::to_chars(digits.begin(), digits.end(), number).ptr;
  json.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

void appendJson(std::string& json, std::chrono::nanoseconds time) {
  const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(time);
  const auto count = static_cast<std::uint64_t>(std::max<std::int64_t>(0, micros.count()));
  std::array<char, 27> digits;  // not initialised
  char* const point = std::to_chars(digits.begin(), digits.end(), count / 1'000'000).ptr;
  char* const end = std::to_chars(point, digits.end(), 1'000'000 + count % 1'000'000).ptr;
  *point = '.';
  json.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

void appendJson(std::string& json, const Json::Value& value, int depth) {
  const char* begin = nullptr;
  const char* end = nullptr;
  switch (value.type()) {
    case Json::arrayValue:
      json += '[';
      appendElementsOf(json, value, depth);
      json += ']';
      break;
    case Json::objectValue:
      json += '{';
      appendElementsOf(json, value, depth);
      json += '}';
      break;
    case Json::stringValue:
      value.getString(&begin, &end);
      appendJson(json, std::string_view(begin, static_cast<std::size_t>(end - begin)));
      break;
    case Json::realValue:
      json += numberText(value.asDouble());
      break;
    case Json::nullValue:
      json += "null";
      break;
    default:
      json += value.asString();
  }
}

}  // namespace libvarrow::host
