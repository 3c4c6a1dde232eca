#include "cppbind/Description.h"

#include <algorithm>
#include <memory>
#include <set>
#include <stdexcept>
#include <utility>

#include "base/readable_json.h"
#include "collector.h"
#include "cppbind/cppbind.h"
#include "readable_part.h"

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

// Returns true when the library reads the values at the depth one by one.
bool hasContainers(const ValueDescription& value, std::size_t depth) {
  const ValueDescription* container = &value;
  for (std::size_t i = 0; i < depth; ++i) {
    const bool isContainer =
        container->kind >= ValueKind::List && container->kind <= ValueKind::Map;
    if (!isContainer || container->elements.empty()) return false;
    container = &container->elements.front();
  }
  return depth > 0;
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
  const boost::shared_ptr<Backup> scope = replaceRegister(decoder);
  const Value made(type_->create(), type_->destroy);
  try {
    type_->read(decoder, json, made.get());
  } catch (...) {
    if (detail::Collector::of(&decoder) == nullptr) throw;
    detail::FaultGroup faults{{detail::Collector::caught()}};
    checkReadable(decoder, json, faults);
    detail::Collector::throwGroup(std::move(faults));
  }
  detail::Gatherer gatherer(decoder);
  for (const Check& check : checks_) {
    gatherer.run([&] { check.run(decoder, json, made.get()); });
  }
  gatherer.finish();
  return true;
}

boost::shared_ptr<Backup> FieldDescription::replaceRegister(JsonDecodeBinder& decoder) const {
  if (reg_ == nullptr) return nullptr;
  return decoder.replaceClassRegister(const_cast<ClassRegisterBase*>(reg_));
}

void FieldDescription::checkReadable(JsonDecodeBinder& decoder, const Json::Value& json,
                                     detail::FaultGroup& faults) const {
  std::set<std::size_t> depths;
  for (const Check& check : checks_) {
    if (hasContainers(value, check.depth)) depths.insert(check.depth);
  }
  const detail::FaultGroup unreadable = faults;
  for (const std::size_t depth : depths) {
    const detail::ReadablePart part(json, unreadable, depth);
    if (part.exists()) checkPart(decoder, part, depth, faults);
  }
}

void FieldDescription::checkPart(JsonDecodeBinder& decoder, const detail::ReadablePart& part,
                                 std::size_t depth, detail::FaultGroup& faults) const {
  if (type_->create == nullptr) return;
  const boost::shared_ptr<Backup> scope = replaceRegister(decoder);
  const Value made(type_->create(), type_->destroy);
  try {
    type_->read(decoder, part.json(), made.get());
  } catch (...) {
    detail::Collector::caught();  // rethrows when memory ran out
    return;                       // a host's codec may need all elements
  }
  for (const Check& check : checks_) {
    if (check.depth != depth) continue;
    try {
      check.run(decoder, part.json(), made.get());
    } catch (...) {
      part.addTo(faults, detail::Collector::caught());
    }
  }
}

}  // namespace cppbind
