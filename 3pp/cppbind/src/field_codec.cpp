#include "cppbind/imp/field_codec.h"

#include <cmath>
#include <limits>

#include "JsonText.h"

namespace cppbind::detail {

namespace {

[[noreturn]] void throwWrongType(const char* typeName) {
  throw ParseErrorException(std::string("Value is not convertible to ") + typeName + ".");
}

// The JSON library would also take true, 1.5 or null for an integer; here a value must have the
// type that its field needs. The words are the library's, which may not be asked itself: it
// converts 2^63 and 2^64 without looking.
[[noreturn]] void refuseInteger(const Json::Value& json, const std::string& typeName) {
  const char* number =
      json.type() == Json::intValue    ? "LargestInt"
      : json.type() == Json::uintValue ? "LargestUInt"
      : json.type() == Json::realValue && std::floor(json.asDouble()) == json.asDouble() ? "double"
                                                                                         : nullptr;
  if (number == nullptr) throwWrongType(typeName.c_str());
  throw ParseErrorException(number + (" out of " + typeName + " range"));
}

void readInt(const Json::Value& json, Json::Int& field) {
  if (!json.isInt()) refuseInteger(json, "Int");
  field = static_cast<Json::Int>(json.asInt64());  // asInt() would check the range again
}

void readUInt(const Json::Value& json, Json::UInt& field) {
  if (!json.isUInt()) refuseInteger(json, "UInt");
  field = json.asUInt();
}

template <class T>
void readInt64(const Json::Value& json, T& field) {
  if (!json.isInt64()) refuseInteger(json, "Int64");
  field = json.asInt64();
}

template <class T>
void readUInt64(const Json::Value& json, T& field) {
  if (!json.isUInt64()) refuseInteger(json, "UInt64");
  field = json.asUInt64();
}

template <class Narrow, class Wide>
Narrow narrowed(Wide value, const char* typeName) {
  if (value < std::numeric_limits<Narrow>::min() || value > std::numeric_limits<Narrow>::max()) {
    throw ParseErrorException(std::string("value out of ") + typeName + " range");
  }
  return static_cast<Narrow>(value);
}

}  // namespace

void readScalar(const Json::Value& json, bool& field) {
  if (!json.isBool()) throwWrongType("bool");
  field = json.asBool();
}

void readScalar(const Json::Value& json, signed char& field) {
  Json::Int wide = 0;
  readInt(json, wide);
  field = narrowed<signed char>(wide, "signed char");
}

void readScalar(const Json::Value& json, unsigned char& field) {
  Json::UInt wide = 0;
  readUInt(json, wide);
  field = narrowed<unsigned char>(wide, "unsigned char");
}

void readScalar(const Json::Value& json, short& field) {
  Json::Int wide = 0;
  readInt(json, wide);
  field = narrowed<short>(wide, "short");
}

void readScalar(const Json::Value& json, unsigned short& field) {
  Json::UInt wide = 0;
  readUInt(json, wide);
  field = narrowed<unsigned short>(wide, "unsigned short");
}

void readScalar(const Json::Value& json, int& field) {
  readInt(json, field);
}

void readScalar(const Json::Value& json, unsigned int& field) {
  readUInt(json, field);
}

void readScalar(const Json::Value& json, long& field) {
  Json::Int64 wide = 0;
  readInt64(json, wide);
  field = narrowed<long>(wide, "long");
}

void readScalar(const Json::Value& json, unsigned long& field) {
  Json::UInt64 wide = 0;
  readUInt64(json, wide);
  field = narrowed<unsigned long>(wide, "unsigned long");
}

void readScalar(const Json::Value& json, long long& field) {
  readInt64(json, field);
}

void readScalar(const Json::Value& json, unsigned long long& field) {
  readUInt64(json, field);
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
    throw ParseErrorException("error: jv=" + json_text::onOneLine(json));
  }
  return std::string_view(begin, static_cast<std::size_t>(end - begin));
}

void throwNotFound() {
  throw ParseErrorException("not found");
}

}  // namespace cppbind::detail
