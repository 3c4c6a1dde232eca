#include "cppbind/imp/field_codec.h"

#include <cmath>
#include <limits>

#include "base/json_text.h"

namespace cppbind::detail {

namespace {

[[noreturn]] void throwWrongType(const char* typeName) {
  throw ParseErrorException(std::string("Value is not convertible to ") + typeName + ".");
}

// The JSON library also converts true, 1.5 and null to an integer; here a value must have the type
// of its field. The wording is the library's; its own check cannot be used, since it accepts 2^63
// and 2^64.
[[noreturn]] void refuseInteger(const Json::Value& json, const std::string& typeName) {
  const char* number =
      json.type() == Json::intValue    ? "LargestInt"
      : json.type() == Json::uintValue ? "LargestUInt"
      : json.type() == Json::realValue && std::floor(json.asDouble()) == json.asDouble() ? "double"
                                                                                         : nullptr;
  if (number == nullptr) throwWrongType(typeName.c_str());
  throw ParseErrorException(number + (" out of " + typeName + " range"));
}

// Reads an integer through one that has its own JSON type, and checks the range.
template <class Wide, class Narrow>
void readNarrow(const Json::Value& json, Narrow& field, const char* typeName) {
  Wide wide = 0;
  readScalar(json, wide);
  if (wide < std::numeric_limits<Narrow>::min() || wide > std::numeric_limits<Narrow>::max()) {
    throw ParseErrorException(std::string("value out of ") + typeName + " range");
  }
  field = static_cast<Narrow>(wide);
}

}  // namespace

void readScalar(const Json::Value& json, bool& field) {
  if (!json.isBool()) throwWrongType("bool");
  field = json.asBool();
}

void readScalar(const Json::Value& json, signed char& field) {
  readNarrow<int>(json, field, "signed char");
}

void readScalar(const Json::Value& json, unsigned char& field) {
  readNarrow<unsigned int>(json, field, "unsigned char");
}

void readScalar(const Json::Value& json, short& field) {
  readNarrow<int>(json, field, "short");
}

void readScalar(const Json::Value& json, unsigned short& field) {
  readNarrow<unsigned int>(json, field, "unsigned short");
}

void readScalar(const Json::Value& json, int& field) {
  if (!json.isInt()) refuseInteger(json, "Int");
  field = static_cast<int>(json.asInt64());  // asInt() would check the range again
}

void readScalar(const Json::Value& json, unsigned int& field) {
  if (!json.isUInt()) refuseInteger(json, "UInt");
  field = json.asUInt();
}

void readScalar(const Json::Value& json, long& field) {
  readNarrow<long long>(json, field, "long");
}

void readScalar(const Json::Value& json, unsigned long& field) {
  readNarrow<unsigned long long>(json, field, "unsigned long");
}

void readScalar(const Json::Value& json, long long& field) {
  if (!json.isInt64()) refuseInteger(json, "Int64");
  field = json.asInt64();
}

void readScalar(const Json::Value& json, unsigned long long& field) {
  if (!json.isUInt64()) refuseInteger(json, "UInt64");
  field = json.asUInt64();
}

void readScalar(const Json::Value& json, float& field) {
  double wide = 0;
  readScalar(json, wide);
  if (std::isfinite(wide) && std::fabs(wide) > std::numeric_limits<float>::max()) {
    throw ParseErrorException("value out of float range");
  }
  field = static_cast<float>(wide);
}

void readScalar(const Json::Value& json, double& field) {
  if (!json.isDouble()) throwWrongType("double");
  field = json.asDouble();
}

void readScalar(const Json::Value& json, std::string& field) {
  const char* begin = nullptr;
  const char* end = nullptr;
  if (!json.getString(&begin, &end)) throwWrongType("string");
  field.assign(begin, end);
}

void requireArray(const Json::Value& json, const char* complaint) {
  if (!json.isArray()) throw ParseErrorException(complaint);
}

void requireObject(const Json::Value& json) {
  if (!json.isObject()) throw ParseErrorException("should be a object");
}

std::string_view textIn(const Json::Value& json) {
  const char* begin = nullptr;
  const char* end = nullptr;
  if (!json.getString(&begin, &end)) {
    throw ParseErrorException("error: jv=" + libvarrow::base::json_text::onOneLine(json));
  }
  return std::string_view(begin, static_cast<std::size_t>(end - begin));
}

void throwNotFound() {
  throw ParseErrorException("not found");
}

}  // namespace cppbind::detail
