#include "cppbind/imp/field_codec.h"

#include <cmath>
#include <limits>

namespace cppbind::detail {

namespace {

[[noreturn]] void throwWrongType(const char* typeName) {
  throw ParseErrorException(std::string("Value is not convertible to ") + typeName + ".");
}

// The JSON library would also take true, 1.5 or null for an integer; here a value must have the
// type that its field needs. What the library refuses, a number out of range say, it says itself.
void readInt(const Json::Value& json, Json::Int& field) {
  if (!json.isInt()) {
    static_cast<void>(json.asInt());
    throwWrongType("Int");
  }
  field = json.asInt();
}

void readUInt(const Json::Value& json, Json::UInt& field) {
  if (!json.isUInt()) {
    static_cast<void>(json.asUInt());
    throwWrongType("UInt");
  }
  field = json.asUInt();
}

template <class T>
void readInt64(const Json::Value& json, T& field) {
  if (!json.isInt64()) {
    static_cast<void>(json.asInt64());
    throwWrongType("Int64");
  }
  field = json.asInt64();
}

template <class T>
void readUInt64(const Json::Value& json, T& field) {
  if (!json.isUInt64()) {
    static_cast<void>(json.asUInt64());
    throwWrongType("UInt64");
  }
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
  if (!json.isString() || !json.getString(&begin, &end)) throwWrongType("string");
  field.assign(begin, end);
}

void requireArray(const Json::Value& json, const char* complaint) {
  if (!json.isArray()) throw ParseErrorException(complaint);
}

void requireObject(const Json::Value& json) {
  if (!json.isObject()) throw ParseErrorException("should be a object");
}

void throwNotFound() {
  throw ParseErrorException("not found");
}

}  // namespace cppbind::detail
