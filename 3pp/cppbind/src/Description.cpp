#include "cppbind/Description.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "base/readable_json.h"
#include "cppbind/cppbind.h"

namespace cppbind {

namespace {

using libvarrow::base::readable_json::onOneLine;

std::string listed(const std::vector<Json::Value>& values) {
  std::string text;
  for (const Json::Value& value : values) {
    if (!text.empty()) text += ", ";
    text += onOneLine(value);
  }
  return text;
}

const ObjectDescription& withId(const std::vector<ObjectDescription>& objects,
                                std::string_view id) {
  const auto found = std::find_if(objects.begin(), objects.end(),
                                  [&](const ObjectDescription& object) { return object.id == id; });
  if (found == objects.end()) throw std::out_of_range("no description " + std::string(id));
  return *found;
}

}  // namespace

std::string Constraint::violation(const Json::Value& value) const {
  switch (kind) {
    case ConstraintKind::AtLeast:
      return onOneLine(value) + " is less than " + listed(values);
    case ConstraintKind::AtMost:
      return onOneLine(value) + " is more than " + listed(values);
    case ConstraintKind::OneOf:
      if (values.empty()) return onOneLine(value) + " is not allowed: oneOf() has no values";
      return onOneLine(value) + " is not one of " + listed(values);
    case ConstraintKind::NotEmpty:
      return "is empty";
    case ConstraintKind::Satisfies:
      break;
  }
  return words;
}

std::string Constraint::condition() const {
  switch (kind) {
    case ConstraintKind::AtLeast:
      return "at least " + listed(values);
    case ConstraintKind::AtMost:
      return "at most " + listed(values);
    case ConstraintKind::OneOf:
      return values.empty() ? "no value is allowed" : "one of " + listed(values);
    case ConstraintKind::NotEmpty:
      return "not empty";
    case ConstraintKind::Satisfies:
      break;
  }
  return words;
}

ValueDescription::ValueDescription() = default;
ValueDescription::ValueDescription(const ValueDescription&) = default;
ValueDescription::ValueDescription(ValueDescription&&) noexcept = default;
ValueDescription& ValueDescription::operator=(const ValueDescription&) = default;
ValueDescription& ValueDescription::operator=(ValueDescription&&) noexcept = default;
ValueDescription::~ValueDescription() = default;

ObjectDescription::ObjectDescription() = default;
ObjectDescription::ObjectDescription(const ObjectDescription&) = default;
ObjectDescription::ObjectDescription(ObjectDescription&&) noexcept = default;
ObjectDescription::~ObjectDescription() = default;

// Swaps, so that the code owner is released after the fields.
ObjectDescription& ObjectDescription::operator=(const ObjectDescription& other) {
  return *this = ObjectDescription(other);
}

ObjectDescription& ObjectDescription::operator=(ObjectDescription&& other) noexcept {
  std::swap(codeOwner_, other.codeOwner_);
  std::swap(id, other.id);
  std::swap(name, other.name);
  std::swap(typeName, other.typeName);
  std::swap(about, other.about);
  std::swap(fields, other.fields);
  std::swap(whole, other.whole);
  std::swap(incompleteBecause, other.incompleteBecause);
  return *this;
}

const FieldDescription* ObjectDescription::field(std::string_view key) const {
  const auto found = std::find_if(fields.begin(), fields.end(),
                                  [&](const FieldDescription& field) { return field.key == key; });
  return found == fields.end() ? nullptr : &*found;
}

const ObjectDescription& Description::classWithId(std::string_view id) const {
  return withId(classes, id);
}

const ObjectDescription& Description::recordWithId(std::string_view id) const {
  return withId(records, id);
}

bool FieldDescription::check(JsonDecodeBinder& decoder, const Json::Value& json) const {
  if (type_ == nullptr) return false;
  const bool readsNull = type_->readsNull != nullptr && type_->readsNull(decoder);
  if (json.isNull() && !type_->isObjectList && !readsNull) detail::throwNotFound();
  if (type_->create == nullptr) return false;
  boost::shared_ptr<Backup> scope;
  if (reg_ != nullptr) scope = decoder.replaceClassRegister(const_cast<ClassRegisterBase*>(reg_));
  const std::unique_ptr<void, void (*)(void*)> made(type_->create(), type_->destroy);
  type_->read(decoder, json, made.get());
  detail::Gatherer gatherer(decoder);
  for (const Check& check : checks_) {
    gatherer.run([&] { check(decoder, json, made.get()); });
  }
  gatherer.finish();
  return true;
}

}  // namespace cppbind
