#include "json_form.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace cppbind::detail {

namespace {

double shortestOf(float number) {
  char text[32];
  const char* const end = std::to_chars(text, text + sizeof text, number).ptr;
  double shortest = 0;
  std::from_chars(text, end, shortest);
  return shortest;
}

}  // namespace

Json::Value shortened(const ValueDescription& value, Json::Value json) {
  const bool isFloat = value.kind == ValueKind::Number && !value.maximum.isNull();
  if (isFloat && json.isDouble() && isFinite(json)) return shortestOf(json.asFloat());
  if (value.elements.empty() || !(json.isArray() || json.isObject())) return json;
  for (Json::Value& element : json) element = shortened(value.elements.front(), element);
  return json;
}

bool isFinite(const Json::Value& json) {
  if (json.type() == Json::realValue) return std::isfinite(json.asDouble());
  return std::all_of(json.begin(), json.end(), isFinite);
}

}  // namespace cppbind::detail
