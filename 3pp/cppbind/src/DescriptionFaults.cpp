#include "cppbind/DescriptionFaults.h"

#include <algorithm>
#include <exception>
#include <map>
#include <new>
#include <string_view>

#include "base/out_of_memory.h"
#include "base/readable_json.h"
#include "base/system_text.h"
#include "cppbind/cppbind.h"
#include "exact_duration.h"
#include "json_form.h"

namespace cppbind {

namespace {

// Returns false for NaN, as conditions do.
bool isAtLeast(const Json::Value& value, const Json::Value& bound, ValueKind kind) {
  if (kind == ValueKind::Duration) {
    const auto duration = detail::exactDuration(value.asString());
    const auto least = detail::exactDuration(bound.asString());
    if (duration && least) return detail::isAtLeast(*duration, *least);
  }
  return bound < value || bound == value;
}

bool isEmpty(const Json::Value& value) {
  return value.isString() ? value.asString().empty() : value.empty();
}

bool allows(const Constraint& constraint, const Json::Value& value, ValueKind kind) {
  switch (constraint.kind) {
    case ConstraintKind::AtLeast:
      return isAtLeast(value, constraint.values.at(0), kind);
    case ConstraintKind::AtMost:
      return isAtLeast(constraint.values.at(0), value, kind);
    case ConstraintKind::OneOf:
      return std::count(constraint.values.begin(), constraint.values.end(), value) > 0;
    case ConstraintKind::NotEmpty:
      return !isEmpty(value);
    case ConstraintKind::Satisfies:
      break;
  }
  return true;  // only the program can tell
}

// Returns values of which one is allowed if any value is: those of a oneOf(), else the bounds.
std::vector<Json::Value> candidates(const std::vector<Constraint>& constraints) {
  std::vector<Json::Value> bounds;
  for (const Constraint& constraint : constraints) {
    if (constraint.kind == ConstraintKind::OneOf) return constraint.values;
    bounds.insert(bounds.end(), constraint.values.begin(), constraint.values.end());
  }
  return bounds;
}

bool allowNothing(const std::vector<Constraint>& constraints, ValueKind kind) {
  const std::vector<Json::Value> values = candidates(constraints);
  return !values.empty() && std::none_of(values.begin(), values.end(), [&](const auto& value) {
    return std::all_of(constraints.begin(), constraints.end(),
                       [&](const auto& constraint) { return allows(constraint, value, kind); });
  });
}

std::string listed(const std::vector<Constraint>& constraints) {
  std::string text;
  for (const Constraint& constraint : constraints) {
    text += (text.empty() ? "" : ", ") + constraint.condition();
  }
  return text;
}

class FaultFinder {
 public:
  FaultFinder(const ClassRegisterBase& reg,
              const boost::shared_ptr<const ConverterTable>& converters)
      : decoder_(const_cast<ClassRegisterBase*>(&reg)) {
    if (!converters) return;
    for (const auto& [type, converter] : *converters) decoder_.setConverter(type, converter);
  }

  void check(const ObjectDescription& object) {
    if (!object.isComplete()) add(object.id, "incomplete: " + object.incompleteBecause);
    for (const FieldDescription& field : object.fields) check(object.id + "." + field.key, field);
    for (const FieldDescription& field : object.whole) check(object.id, field);
  }

  std::vector<std::string> faults() const { return faults_; }

 private:
  void add(const std::string& place, const std::string& fault) {
    faults_.push_back(place + ": " + fault);
  }

  void check(const std::string& place, const FieldDescription& field) {
    checkValue(place, field.value);
    if (!field.defaultFault.empty()) add(place, "default: " + field.defaultFault);
    // Null is not read.
    if (field.defaultValue && !field.defaultValue->isNull()) checkDefault(place, field);
  }

  void checkDefault(const std::string& place, const FieldDescription& field) {
    try {
      field.check(decoder_, *field.defaultValue);
    } catch (const std::exception& error) {
      if (libvarrow::base::isOutOfMemory(error)) throw std::bad_alloc();
      const Json::Value json = detail::shortened(field.value, *field.defaultValue);
      add(place, "default " + libvarrow::base::readable_json::onOneLine(json) + ": " +
                     libvarrow::base::utf8Text(error.what()));
    }
  }

  void checkNames(const std::string& place, const ValueDescription& value) {
    if (value.kind != ValueKind::Enumeration) return;
    std::map<std::string_view, int> counts;
    for (const std::string& name : value.names) {
      if (++counts[name] == 2) add(place, "several values have the name \"" + name + "\"");
    }
  }

  void checkValue(const std::string& place, const ValueDescription& value) {
    for (const std::string& enumerator : value.unnamed) add(place, enumerator + " has no name");
    checkNames(place, value);
    for (const Constraint& constraint : value.constraints) {
      const bool isEmptyOneOf =
          constraint.kind == ConstraintKind::OneOf && constraint.values.empty();
      if (isEmptyOneOf) add(place, constraint.condition());
    }
    if (allowNothing(value.constraints, value.kind)) {
      add(place, "no value is " + listed(value.constraints));
    }
    for (const ValueDescription& element : value.elements) checkValue(place + "[]", element);
  }

  JsonDecodeBinder decoder_;
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> descriptionFaults(const ClassRegisterBase& reg,
                                           boost::shared_ptr<const ConverterTable> converters) {
  FaultFinder finder(reg, converters);
  const Description description = describe(reg, std::move(converters));
  for (const ObjectDescription& made : description.classes) finder.check(made);
  for (const ObjectDescription& made : description.records) finder.check(made);
  return finder.faults();
}

}  // namespace cppbind
