#include "cppbind/imp/field_codec.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

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

namespace {

struct IntegerType {
  const std::type_info* type;
  Json::Value minimum;
  Json::Value maximum;
};

template <class T>
IntegerType integerType() {
  using Wide = std::conditional_t<std::is_signed_v<T>, Json::Int64, Json::UInt64>;
  return {&typeid(T), static_cast<Wide>(std::numeric_limits<T>::min()),
          static_cast<Wide>(std::numeric_limits<T>::max())};
}

}  // namespace

void describeScalar(ValueDescription& value, const std::type_info& type) {
  value.kind = type == typeid(bool)          ? ValueKind::Boolean
               : type == typeid(std::string) ? ValueKind::Text
                                             : ValueKind::Number;
  if (type == typeid(float)) {
    value.minimum = static_cast<double>(std::numeric_limits<float>::lowest());
    value.maximum = static_cast<double>(std::numeric_limits<float>::max());
  }
  const IntegerType integers[] = {
      integerType<signed char>(), integerType<unsigned char>(),
      integerType<short>(),       integerType<unsigned short>(),
      integerType<int>(),         integerType<unsigned int>(),
      integerType<long>(),        integerType<unsigned long>(),
      integerType<long long>(),   integerType<unsigned long long>(),
  };
  for (const IntegerType& integer : integers) {
    if (*integer.type != type) continue;
    value.kind = ValueKind::Integer;
    value.minimum = integer.minimum;
    value.maximum = integer.maximum;
  }
}

namespace {

bool removeEnd(std::string_view& text, std::string_view end) {
  if (text.size() < end.size() || text.substr(text.size() - end.size()) != end) return false;
  text.remove_suffix(end.size());
  return true;
}

// Returns the identifier at the end of the text of a probed value; nothing for one that is a number
// or that the compiler writes in another form.
std::string_view enumeratorIn(std::string_view text) {
  constexpr std::string_view kEndOfVisualC = ">(void)";
  if (!removeEnd(text, "]") && !removeEnd(text, kEndOfVisualC)) return {};
  const std::size_t before = text.find_last_of("<:) ");
  if (before != std::string_view::npos) text.remove_prefix(before + 1);
  const bool isNumber = text.empty() || text.front() == '-' || (text[0] >= '0' && text[0] <= '9');
  return isNumber ? std::string_view() : text;
}

bool hasName(std::int64_t value, const EnumTable& names) {
  return std::any_of(names.entries, names.entries + names.count,
                     [&](const EnumEntry& entry) { return entry.value == value; });
}

}  // namespace

void describeNames(ValueDescription& value, const EnumTable& names, const ProbedValues& probed) {
  value.kind = ValueKind::Enumeration;
  std::set<std::pair<std::int64_t, std::string_view>> seen;
  for (std::size_t i = 0; i < names.count; ++i) {
    const EnumEntry& entry = names.entries[i];
    if (!seen.emplace(entry.value, entry.name).second) continue;
    value.names.emplace_back(entry.name);
    value.writtenNames.emplace_back(nameOf(entry.value, names));
  }
  for (std::size_t i = 0; i < probed.count; ++i) {
    const std::string_view enumerator = enumeratorIn(probed.texts[i]);
    const std::int64_t number = probed.first + static_cast<std::int64_t>(i);
    if (!enumerator.empty() && !hasName(number, names)) value.unnamed.emplace_back(enumerator);
  }
}

std::int64_t valueNamed(const Json::Value& json, const EnumTable& names) {
  const std::string_view text = textIn(json);
  Constraint oneOf{ConstraintKind::OneOf, {}};
  for (std::size_t i = 0; i < names.count; ++i) {
    const EnumEntry& entry = names.entries[i];
    if (entry.name == text) return entry.value;
    oneOf.values.emplace_back(std::string(entry.name));
  }
  throw ParseErrorException(oneOf.violation(json));
}

std::string_view nameOf(std::int64_t value, const EnumTable& names) {
  for (std::size_t i = 0; i < names.count; ++i) {
    if (names.entries[i].value == value) return names.entries[i].name;
  }
  throw ParseErrorException("the value " + std::to_string(value) + " has no name");
}

void throwNotFound() {
  throw ParseErrorException("not found");
}

}  // namespace cppbind::detail
