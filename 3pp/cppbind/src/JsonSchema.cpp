#include "cppbind/JsonSchema.h"

#include <algorithm>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cmath>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/readable_json.h"
#include "cppbind/type/StringConverter.h"
#include "exact_duration.h"
#include "json_form.h"

namespace cppbind {

namespace {

constexpr const char* kDraft = "http://json-schema.org/draft-07/schema#";

// The texts of one kind as the library writes them.
struct TextForm {
  std::string pattern;
  std::string example;
};

TextForm textForm(ValueKind kind) {
  const std::string day = "(1[4-9]|[2-9][0-9])[0-9]{2}-(0[1-9]|1[0-2])-(0[1-9]|[12][0-9]|3[01])";
  const std::string ofHour = ":[0-5][0-9]:[0-5][0-9]";
  const std::string end = "|not-a-date-time|[+-]infinity)$";
  if (kind == ValueKind::Date) return {"^(" + day + end, "2024-03-05"};
  if (kind == ValueKind::Duration) return {"^([0-9]{2}" + ofHour + end, "26:05:03"};
  return {"^(" + day + " ([01][0-9]|2[0-3])" + ofHour + end, "2024-03-05 07:08:09"};
}

bool isTimeText(ValueKind kind) {
  return kind == ValueKind::Date || kind == ValueKind::Time || kind == ValueKind::Duration;
}

// Returns a pattern for texts of the form of `bound` that are equal or later, or earlier. All
// numbers in them have a fixed number of digits. A sign is that of an infinity.
std::string orderPattern(const std::string& bound, bool isLeast) {
  std::string pattern = "^(" + bound;
  for (std::size_t i = 0; i < bound.size(); ++i) {
    const char digit = bound[i];
    if (digit < '0' || digit > '9' || digit == (isLeast ? '9' : '0')) continue;
    const char next = static_cast<char>(isLeast ? digit + 1 : digit - 1);
    pattern += "|" + bound.substr(0, i) + "[";
    pattern += isLeast ? std::string{next, '-', '9'} : std::string{'0', '-', next};
    pattern += "]";
  }
  return pattern + (isLeast ? "|\\+)" : "|-)");
}

bool hasForm(const std::string& bound, ValueKind kind) {
  const std::string example = textForm(kind).example;
  return bound.size() == example.size() &&
         std::equal(bound.begin(), bound.end(), example.begin(), [](char a, char b) {
           const bool isDigit = a >= '0' && a <= '9';
           return isDigit ? b >= '0' && b <= '9' : a == b;
         });
}

// Returns the text of the last whole second up to a duration, or of the first one from it on. The
// texts in files are from "00:00:00" to "99:59:59"; an infinity means that there is none.
std::string wholeSecond(const std::string& text, bool isFirst) {
  const auto exact = detail::exactDuration(text);
  if (!exact || exact->is_special()) return text;
  const std::int64_t ticksPerSecond = boost::posix_time::time_duration::ticks_per_second();
  const std::int64_t ticks = exact->ticks();
  const std::int64_t rest = ticks % ticksPerSecond;
  std::int64_t seconds = ticks / ticksPerSecond;
  if (isFirst && rest > 0) ++seconds;
  if (!isFirst && rest < 0) --seconds;
  constexpr std::int64_t kEnd = 100 * 3600;
  if (seconds < 0) return isFirst ? "00:00:00" : "-infinity";
  if (seconds >= kEnd) return isFirst ? "+infinity" : "99:59:59";
  return BoostTimeDurationText::toString(boost::posix_time::seconds(seconds));
}

Json::Value object(const char* key, Json::Value value) {
  Json::Value made(Json::objectValue);
  made[key] = std::move(value);
  return made;
}

Json::Value invalid() {
  return object("not", Json::Value(Json::objectValue));
}

Json::Value typed(const char* type) {
  return object("type", type);
}

// Adds the keywords of `part`, separately if `schema` has one of them.
void require(Json::Value& schema, const Json::Value& part) {
  const Json::Value::Members keys = part.getMemberNames();
  const bool isMerged = std::none_of(keys.begin(), keys.end(),
                                     [&](const std::string& key) { return schema.isMember(key); });
  if (!isMerged) {
    schema["allOf"].append(part);
    return;
  }
  for (const std::string& key : keys) schema[key] = part[key];
}

// Allows null, too.
Json::Value orNull(const Json::Value& schema) {
  if (schema.empty()) return schema;
  Json::Value made;
  if (schema["type"].isNull() || schema.isMember("allOf") || schema.isMember("not")) {
    made["anyOf"].append(schema);
    made["anyOf"].append(typed("null"));
    return made;
  }
  made = schema;
  if (schema["type"].isString()) {
    made["type"] = Json::Value(Json::arrayValue);
    made["type"].append(schema["type"]);
  }
  made["type"].append("null");
  if (schema.isMember("enum")) made["enum"].append(Json::Value());
  return made;
}

// Keywords beside "$ref" are ignored.
void annotate(Json::Value& schema, const char* key, const Json::Value& value) {
  if (schema.isMember("$ref")) {
    Json::Value wrapped;
    wrapped["allOf"].append(schema);
    schema = wrapped;
  }
  schema[key] = value;
}

Json::Value timeBoundSchema(ValueKind kind, const Json::Value& bound, bool isLeast) {
  if (!bound.isString()) return Json::Value();
  std::string text = bound.asString();
  if (kind == ValueKind::Duration) text = wholeSecond(text, isLeast);
  if (text == "not-a-date-time") return invalid();
  if (text == "-infinity") return object("pattern", isLeast ? "^[^n]" : "^-");
  if (text == "+infinity") return object("pattern", isLeast ? "^\\+" : "^[^n]");
  if (!hasForm(text, kind)) return Json::Value();
  return object("pattern", orderPattern(text, isLeast));
}

// Returns the keywords for a constraint; none, if JSON Schema has none.
Json::Value boundSchema(const ValueDescription& value, const Constraint& constraint) {
  const bool isLeast = constraint.kind == ConstraintKind::AtLeast;
  const Json::Value bound = detail::shortened(value, constraint.values.at(0));
  if (isTimeText(value.kind)) return timeBoundSchema(value.kind, bound, isLeast);
  if (value.kind != ValueKind::Integer && value.kind != ValueKind::Number) return Json::Value();
  if (detail::isFinite(bound)) return object(isLeast ? "minimum" : "maximum", bound);
  const bool allowsAll = !std::isnan(bound.asDouble()) && (bound.asDouble() < 0) == isLeast;
  return allowsAll ? Json::Value(Json::objectValue) : invalid();
}

// Returns the allowed values and the other names of those that are enumerators.
std::vector<Json::Value> allowedValues(const ValueDescription& value,
                                       const Constraint& constraint) {
  std::vector<Json::Value> values = constraint.values;
  for (std::size_t i = 0; i < value.writtenNames.size(); ++i) {
    const auto& allowed = constraint.values;
    const bool isAllowed =
        std::find(allowed.begin(), allowed.end(), value.writtenNames[i]) != allowed.end();
    if (isAllowed) values.emplace_back(value.names.at(i));
  }
  return values;
}

Json::Value oneOfSchema(const ValueDescription& value, const Constraint& constraint) {
  if (value.kind == ValueKind::Any || value.kind >= ValueKind::List) return Json::Value();
  Json::Value values(Json::arrayValue);
  std::set<Json::Value> seen;  // the meta-schema wants unique values, and at least one
  for (const Json::Value& allowed : allowedValues(value, constraint)) {
    const Json::Value form = detail::shortened(value, allowed);
    if (detail::isFinite(form) && seen.insert(form).second) values.append(form);
  }
  return values.empty() ? invalid() : object("enum", values);
}

Json::Value notEmptySchema(ValueKind kind) {
  switch (kind) {
    case ValueKind::Text:
      return object("minLength", 1);
    case ValueKind::List:
    case ValueKind::Set:
      return object("minItems", 1);
    case ValueKind::Map:
      return object("minProperties", 1);
    default:
      return Json::Value();
  }
}

Json::Value schemaOf(const ValueDescription& value, const Constraint& constraint) {
  switch (constraint.kind) {
    case ConstraintKind::AtLeast:
    case ConstraintKind::AtMost:
      return boundSchema(value, constraint);
    case ConstraintKind::OneOf:
      return oneOfSchema(value, constraint);
    case ConstraintKind::NotEmpty:
      return notEmptySchema(value.kind);
    case ConstraintKind::Satisfies:
      break;
  }
  return Json::Value();
}

// Returns the fragment of a URI for a definition.
std::string referenceTo(const std::string& definition) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text = "#/definitions/";
  for (const char c : definition) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                         (c >= 'a' && c <= 'z') || c == '.' || c == ':' || c == '_' || c == '-';
    if (c == '~' || c == '/') {
      text += c == '~' ? "~0" : "~1";
    } else if (isPlain) {
      text += c;
    } else {
      text += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return text;
}

class SchemaBuilder {
 public:
  explicit SchemaBuilder(const Description& description) : description_(description) {}

  Json::Value build() {
    Json::Value schema = rootSchema();
    annotate(schema, "$schema", kDraft);
    // The list grows while the definitions refer to others.
    for (std::size_t i = 0; i < referred_.size(); ++i) {
      const Referred& next = referred_[i];
      definitions_[next.key] = objectSchema(*next.object, next.isClass);
    }
    schema["definitions"] = definitions_;
    return schema;
  }

 private:
  struct Referred {
    std::string key;
    const ObjectDescription* object;
    bool isClass;
  };

  Json::Value reference(const std::string& definition) {
    return object("$ref", referenceTo(definition));
  }

  Json::Value referenceToObject(const ObjectDescription& object, bool isClass) {
    const std::string key = (isClass ? "class." : "record.") + object.id;
    if (known_.insert(key).second) referred_.push_back({key, &object, isClass});
    return reference(key);
  }

  Json::Value rootSchema() {
    const ValueDescription& root = description_.root;
    if (root.kind != ValueKind::Record || root.names.empty()) {
      return valueSchema(root);
    }
    Json::Value schema = objectSchema(description_.recordWithId(root.names.front()), true);
    if (!schema.isMember("properties")) return schema;
    Json::Value& property = schema["properties"]["$schema"];
    if (property.isNull()) property = typed("string");
    return schema;
  }

  Json::Value objectSchema(const ObjectDescription& made, bool isNullEmpty) {
    std::vector<Json::Value> parts;
    for (const FieldDescription& whole : made.whole) parts.push_back(fieldSchema(whole));
    if (!made.fields.empty() || (made.whole.empty() && made.isComplete())) {
      parts.push_back(membersSchema(made, isNullEmpty));
    }
    Json::Value schema(Json::objectValue);
    if (parts.size() == 1) schema = parts.front();
    if (parts.size() > 1) {
      for (const Json::Value& part : parts) schema["allOf"].append(part);
    }
    annotate(schema, "title", made.name);
    if (!made.about.empty()) schema["description"] = made.about;
    if (!made.isComplete()) schema["$comment"] = "incomplete: " + made.incompleteBecause;
    return schema;
  }

  Json::Value membersSchema(const ObjectDescription& made, bool isNullEmpty) {
    Json::Value properties(Json::objectValue);
    std::set<std::string> required;
    for (const FieldDescription& field : made.fields) {
      if (field.isRequired) required.insert(field.key);
      if (properties.isMember(field.key)) {
        const Json::Value before = properties[field.key];
        properties[field.key] = Json::Value();
        properties[field.key]["allOf"].append(before);
        properties[field.key]["allOf"].append(fieldSchema(field));
      } else {
        properties[field.key] = fieldSchema(field);
      }
    }
    Json::Value schema = typed("object");
    schema["properties"] = properties;
    if (made.isComplete() && made.whole.empty()) schema["additionalProperties"] = false;
    for (const std::string& key : required) schema["required"].append(key);
    // The fields of a class, but not of a record in a field, may be null.
    return isNullEmpty && required.empty() ? orNull(schema) : schema;
  }

  Json::Value fieldSchema(const FieldDescription& field) {
    Json::Value schema = valueSchema(field.value, !field.isRequired);
    if (field.defaultValue && detail::isFinite(*field.defaultValue)) {
      annotate(schema, "default", detail::shortened(field.value, *field.defaultValue));
    }
    return schema;
  }

  Json::Value valueSchema(const ValueDescription& value, bool isOptional = false) {
    Json::Value schema = kindSchema(value);
    std::string text = value.about;
    std::vector<Json::Value> parts;
    for (const Constraint& constraint : value.constraints) {
      const Json::Value part = schemaOf(value, constraint);
      if (part.isNull() || part.isMember("pattern")) {
        text += (text.empty() ? "" : "\n") + std::string("Condition: ") + constraint.condition();
      }
      if (part.isNull()) continue;
      require(schema, part);
    }
    addTypeLimits(schema, value);
    if (value.isNullable || isOptional) schema = orNull(schema);
    if (!text.empty()) annotate(schema, "description", text);
    return schema;
  }

  // After the constraints, which are stricter.
  static void addTypeLimits(Json::Value& schema, const ValueDescription& value) {
    if (!value.minimum.isNull() && !schema.isMember("minimum")) schema["minimum"] = value.minimum;
    if (!value.maximum.isNull() && !schema.isMember("maximum")) schema["maximum"] = value.maximum;
    if (value.kind != ValueKind::Enumeration || schema.isMember("enum")) return;
    schema["enum"] = Json::Value(Json::arrayValue);
    std::set<std::string> seen;
    for (const std::string& name : value.names) {
      if (seen.insert(name).second) schema["enum"].append(name);
    }
  }

  Json::Value kindSchema(const ValueDescription& value) {
    switch (value.kind) {
      case ValueKind::Any:
        return anySchema(value);
      case ValueKind::Boolean:
        return typed("boolean");
      case ValueKind::Integer:
        return typed("integer");
      case ValueKind::Number:
        return typed("number");
      case ValueKind::Text:
      case ValueKind::Enumeration:
        return typed("string");
      case ValueKind::Date:
      case ValueKind::Time:
      case ValueKind::Duration:
        return timeSchema(value.kind);
      case ValueKind::List:
      case ValueKind::Set:
        return containerSchema(value, "array", "items");
      case ValueKind::Map:
        return containerSchema(value, "object", "additionalProperties");
      case ValueKind::Record:
        return value.names.empty()
                   ? Json::Value(Json::objectValue)
                   : referenceToObject(description_.recordWithId(value.names.front()), false);
      case ValueKind::Object:
        return reference(choiceKey(value.names));
    }
    return Json::Value(Json::objectValue);
  }

  // Null counts as missing.
  static Json::Value anySchema(const ValueDescription& value) {
    Json::Value schema(Json::objectValue);
    if (value.isNullable) return schema;
    for (const char* type : {"boolean", "number", "string", "array", "object"}) {
      schema["type"].append(type);
    }
    return schema;
  }

  static Json::Value timeSchema(ValueKind kind) {
    const TextForm form = textForm(kind);
    Json::Value schema = typed("string");
    schema["pattern"] = form.pattern;
    schema["examples"].append(form.example);
    return schema;
  }

  Json::Value containerSchema(const ValueDescription& value, const char* type,
                              const char* elements) {
    Json::Value schema = typed(type);
    if (!value.elements.empty()) schema[elements] = valueSchema(value.elements.front());
    return schema;
  }

  // Returns the definition of an object of one of these classes. Many fields have the same choice.
  std::string choiceKey(const std::vector<std::string>& ids) {
    const auto [known, isNew] = choices_.try_emplace(ids);
    if (!isNew) return known->second;
    known->second = "object." + std::to_string(choices_.size());
    Json::Value schema = typed("object");
    schema["properties"] = Json::Value(Json::objectValue);
    for (const std::string& id : ids) {
      const ObjectDescription& made = description_.classWithId(id);
      schema["properties"][made.name] = referenceToObject(made, true);
    }
    schema["additionalProperties"] = false;
    schema["minProperties"] = 1;
    schema["maxProperties"] = 1;
    definitions_[known->second] = schema;
    return known->second;
  }

  const Description& description_;
  Json::Value definitions_{Json::objectValue};
  std::map<std::vector<std::string>, std::string> choices_;
  std::set<std::string> known_;
  std::deque<Referred> referred_;
};

}  // namespace

Json::Value jsonSchema(const Description& description) {
  return SchemaBuilder(description).build();
}

std::string schemaText(const Json::Value& schema) {
  return libvarrow::base::readable_json::indented(schema);
}

}  // namespace cppbind
