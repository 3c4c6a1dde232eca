// The notes on one class or record while its setBind describes it.
#pragma once

#include <json/value.h>

#include <deque>
#include <string_view>
#include <utility>

#include "cppbind/Describer.h"
#include "cppbind/Description.h"
#include "cppbind/ParseErrorException.h"
#include "cppbind/imp/field_type.h"

namespace cppbind::detail {

/// Thrown when an object of a registered class is written as part of a default value: it may not
/// have been created by name.
struct ObjectAsDefault : ParseErrorException {
  ObjectAsDefault() : ParseErrorException("an object cannot be a default value") {}
};

/// Notes on one object. Fields keep their addresses, as handles refer to them.
class ObjectNotes {
 public:
  /// Creates notes for `object`, which receives the fields from finish().
  ObjectNotes(Describer& describer, ObjectDescription& object)
      : describer_(describer), object_(object) {}

  /// Adds a field of `type` and returns it.
  FieldDescription& addField(std::string_view key, const FieldType& type);
  /// Adds a list of objects of classes in `reg`.
  FieldDescription& addList(std::string_view key, const FieldType& type,
                            const ClassRegisterBase* reg);
  /// Adds the whole value and returns it.
  FieldDescription& addWhole(const FieldType& type);
  /// Sets the default to the JSON form of `value`, if it has one.
  void setDefault(FieldDescription& field, const FieldType& type, const void* value) const;
  /// Sets the text of the class.
  void setAbout(std::string_view text) { object_.about = text; }
  /// Moves the fields into the description.
  void finish();

  /// Adds a constraint and its check to a field.
  static void addConstraint(FieldDescription& field, Constraint constraint,
                            FieldDescription::Check check);
  /// Returns the value of the field (depth 0) or of its elements.
  static ValueDescription& valueAt(FieldDescription& field, std::size_t depth);

 private:
  FieldDescription& describe(FieldDescription& field, const FieldType& type);

  Describer& describer_;
  ObjectDescription& object_;
  std::deque<FieldDescription> fields_;
  std::deque<FieldDescription> whole_;
};

}  // namespace cppbind::detail
