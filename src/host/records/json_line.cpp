#include "host/records/json_line.h"

#include <json/writer.h>

#include "base/ClassicNumbers.h"
#include "host/json_string.h"

namespace libvarrow::host {

std::string jsonText(const std::string& text) {
  return Json::valueToQuotedString(jsonString(text).asCString());
}

std::string jsonSeconds(std::chrono::nanoseconds time) {
  const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(time).count();
  const std::string part = std::to_string(micros % 1'000'000);
  return std::to_string(micros / 1'000'000) + '.' + std::string(6 - part.size(), '0') + part;
}

std::string jsonLine(const Json::Value& value) {
  [[maybe_unused]] const base::ClassicNumbers classicNumbers{};
  static const Json::StreamWriterBuilder builder = [] {
    Json::StreamWriterBuilder made;
    made["indentation"] = "";
    return made;
  }();
  return Json::writeString(builder, value);
}

}  // namespace libvarrow::host
