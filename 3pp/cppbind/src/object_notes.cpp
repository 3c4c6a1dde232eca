#include "object_notes.h"

#include <iterator>
#include <string>

namespace cppbind::detail {

namespace {

void moveTo(std::vector<FieldDescription>& to, std::deque<FieldDescription>& from) {
  to.assign(std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

}  // namespace

FieldDescription& ObjectNotes::describe(FieldDescription& field, const FieldType& type) {
  describer_.describeField(field, type);
  return field;
}

FieldDescription& ObjectNotes::addField(std::string_view key, const FieldType& type) {
  FieldDescription& field = fields_.emplace_back();
  field.key = key;
  return describe(field, type);
}

FieldDescription& ObjectNotes::addList(std::string_view key, const FieldType& type,
                                       const ClassRegisterBase* reg) {
  const Describer::RegisterScope scope(describer_, reg);
  return addField(key, type);
}

FieldDescription& ObjectNotes::addWhole(const FieldType& type) {
  return describe(whole_.emplace_back(), type);
}

void ObjectNotes::setDefault(FieldDescription& field, const FieldType& type,
                             const void* value) const {
  describer_.setDefault(field, type, value);
}

void ObjectNotes::finish() {
  moveTo(object_.fields, fields_);
  moveTo(object_.whole, whole_);
}

ValueDescription& ObjectNotes::valueAt(FieldDescription& field, std::size_t depth) {
  ValueDescription* value = &field.value;
  for (; depth > 0; --depth) {
    // A host's codec may have described no elements.
    if (value->elements.empty()) value->elements.emplace_back();
    value = &value->elements.front();
  }
  return *value;
}

void ObjectNotes::addConstraint(FieldDescription& field, Constraint constraint,
                                FieldDescription::Check check) {
  valueAt(field, check.depth).constraints.push_back(std::move(constraint));
  field.checks_.push_back(std::move(check));
}

}  // namespace cppbind::detail
