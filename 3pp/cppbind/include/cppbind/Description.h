// The description of types and registers: their JSON as data, for schemas, references and checks.
#pragma once

#include <json/value.h>

#include <boost/shared_ptr.hpp>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cppbind/BinderImpBase.h"
#include "cppbind/CodeOwner.h"
#include "cppbind/Export.h"

namespace cppbind {

class ClassRegisterBase;
class Describer;
class JsonDecodeBinder;
class ObjFactory;

namespace detail {
class Collector;
struct FaultGroup;
struct FieldType;
struct RecordType;
class ObjectNotes;
class ReadablePart;
}  // namespace detail

/// Kinds of JSON values.
enum class ValueKind {
  Any,          ///< unknown, such as a class that renders itself
  Boolean,      ///< true or false
  Integer,      ///< an integer from `minimum` to `maximum`
  Number,       ///< a number
  Text,         ///< a string
  Date,         ///< a string such as "2024-03-05"
  Time,         ///< a string such as "2024-03-05 07:08:09"
  Duration,     ///< a string such as "26:05:03"
  Enumeration,  ///< one of the strings in `names`
  List,         ///< an array of values like `elements.front()`
  Set,          ///< the same, in which equal values count once
  Map,          ///< an object whose members are values like `elements.front()`, with any keys
  Record,       ///< as the record with the id in `names`
  Object        ///< {"ClassName": {fields}}, of one of the classes with the ids in `names`
};

/// Kinds of constraints.
enum class ConstraintKind {
  AtLeast,   ///< not less than the value
  AtMost,    ///< not more than the value
  OneOf,     ///< equal to one of the values
  NotEmpty,  ///< a text, list, set or map that is not empty
  Satisfies  ///< as the words say; only the program can check it
};

/// A condition on a value.
struct CPPBIND_API Constraint {
  ConstraintKind kind;              ///< the kind
  std::vector<Json::Value> values;  ///< the bound, or the allowed values
  std::string words{};              ///< of Satisfies: the condition

  /// Returns the message for `value`, which breaks the constraint: "0 is less than 1".
  std::string violation(const Json::Value& value) const;
  /// Returns the condition for users: "at least 1", or the words.
  std::string condition() const;
};

/// The description of one value.
struct CPPBIND_API ValueDescription {
  ValueKind kind = ValueKind::Any;   ///< the kind
  bool isNullable = false;           ///< null is a value, too
  Json::Value minimum{};             ///< of Integer, and of Number for float: the least
  Json::Value maximum{};             ///< and the greatest value of the C++ type; else null
  std::vector<std::string> names{};  ///< of Enumeration: the names; of Record, Object: ids
  /// Of Enumeration: for each of `names` the name of the same value that is written; empty: itself.
  std::vector<std::string> writtenNames{};
  /// Of Enumeration: enumerators without a name in JSON, as in the code. Only those near the named
  /// ones are found.
  std::vector<std::string> unnamed{};
  std::vector<ValueDescription> elements;  ///< of List, Set and Map: one, their elements
  std::vector<Constraint> constraints{};   ///< the conditions, in the order of their declaration
  std::string about{};                     ///< the text for users; may be empty

  ValueDescription();
  ///@{
  /// Copies or moves the description.
  ValueDescription(const ValueDescription&);
  ValueDescription(ValueDescription&&) noexcept;
  ValueDescription& operator=(const ValueDescription&);
  ValueDescription& operator=(ValueDescription&&) noexcept;
  ///@}
  ~ValueDescription();
};

/// One key of an object, or the whole value of an object without keys.
class CPPBIND_API FieldDescription {
 public:
  std::string key{};                          ///< the key; empty for a whole value
  ValueDescription value{};                   ///< its value
  bool isRequired = true;                     ///< missing or null is an error
  std::optional<Json::Value> defaultValue{};  ///< replaces a missing value; none: unknown
  std::string defaultFault{};  ///< why the default has no JSON form; empty for objects by class

  /// Reads `json` into a temporary value and checks the constraints. Throws ParseErrorException,
  /// without the key, for the first fault. Returns false, without reading, when values of the type
  /// cannot be created. `decoder` creates objects of registered classes.
  bool check(JsonDecodeBinder& decoder, const Json::Value& json) const;

 private:
  friend class Describer;
  friend class detail::Collector;
  friend class detail::ObjectNotes;

  // A constraint on values at a depth in the field: 1 for its elements, 2 for those of elements.
  struct Check {
    std::size_t depth;
    // Throws when the value at the address, which was read from the JSON, breaks the constraint.
    std::function<void(JsonDecodeBinder&, const Json::Value&, const void*)> run;
  };
  using Value = std::unique_ptr<void, void (*)(void*)>;

  boost::shared_ptr<Backup> replaceRegister(JsonDecodeBinder& decoder) const;
  // Adds the broken conditions of elements in `json` to `faults`, those of the elements that cannot
  // be read.
  void checkReadable(JsonDecodeBinder& decoder, const Json::Value& json,
                     detail::FaultGroup& faults) const;
  void checkPart(JsonDecodeBinder& decoder, const detail::ReadablePart& part, std::size_t depth,
                 detail::FaultGroup& faults) const;

  const detail::FieldType* type_ = nullptr;
  const ClassRegisterBase* reg_ = nullptr;  // of objects, unless it is the one of the description
  std::vector<Check> checks_;  // in the order of their declaration, also those of elements
};

/// The fields of a class or of a record.
class CPPBIND_API ObjectDescription {
 private:
  CodeOwner codeOwner_;  // first, as the fields refer to the code

 public:
  /// The name inside the description; of several classes or records with the same name the later
  /// ones have a number: "Slot (2)".
  std::string id{};
  std::string name{};      ///< of a class: as registered; of a record: the name of the type
  std::string typeName{};  ///< the readable name of the C++ type
  std::string about{};     ///< the text for users; may be empty
  /// The fields in the order in which they are bound. A value under a key that is bound twice must
  /// fit both entries.
  std::vector<FieldDescription> fields{};
  /// Not empty when the class binds the whole value instead of members.
  std::vector<FieldDescription> whole{};
  /// Empty: the description is complete. Otherwise the exception that ended it; further fields may
  /// exist.
  std::string incompleteBecause{};

  ObjectDescription();
  ///@{
  /// Copies or moves the description.
  ObjectDescription(const ObjectDescription&);
  ObjectDescription(ObjectDescription&&) noexcept;
  ObjectDescription& operator=(const ObjectDescription&);
  ObjectDescription& operator=(ObjectDescription&&) noexcept;
  ///@}
  ~ObjectDescription();

  /// Returns true when all fields are known.
  bool isComplete() const { return incompleteBecause.empty(); }
  /// Returns the first field with this key, or null.
  const FieldDescription* field(std::string_view key) const;

 private:
  friend class Describer;
};

/// The description of a type or of a register: plain data, which may be copied and walked. It keeps
/// the code of classes from plug-ins loaded. FieldDescription::check() also needs the registers.
struct CPPBIND_API Description {
  /// The described value: of a register, an object of any of its classes.
  ValueDescription root{};
  /// Classes, sorted by id: those of the register and those of other registers in use.
  std::vector<ObjectDescription> classes{};
  /// Classes without a name in JSON that are used as fields, sorted by id.
  std::vector<ObjectDescription> records{};

  /// Returns the class with this id. Throws std::out_of_range when there is none.
  const ObjectDescription& classWithId(std::string_view id) const;
  /// Returns the record with this id. Throws std::out_of_range when there is none.
  const ObjectDescription& recordWithId(std::string_view id) const;
};

/// Returns the description of all classes in `reg`. Each class is default-constructed (or, if it is
/// constructed from a record, only the record is), and its setBind is called with a binder that
/// reads nothing; see Binder::isDescribing(). Prints nothing. Throws only std::bad_alloc: other
/// exceptions of a class make its description incomplete. `converters` are those of the binder that
/// will read (null: the standard ones). Thread-safe as far as the classes' constructors and setBind
/// are, while no thread changes the register.
CPPBIND_API Description describe(const ClassRegisterBase& reg,
                                 boost::shared_ptr<const ConverterTable> converters = nullptr);

namespace detail {
CPPBIND_API Description describeType(const FieldType& type, const ClassRegisterBase* reg,
                                     boost::shared_ptr<const ConverterTable> converters);
/// Describes an object of one of the classes in `reg` that `fits` accepts, read by a binder without
/// register.
CPPBIND_API Description describeObjects(const ClassRegisterBase& reg,
                                        bool (*fits)(const ObjFactory& factory));
}  // namespace detail

/// Returns the description of the type `T` in the same way. Objects that JSON names by class are of
/// classes in `reg` (null: of none). Include cppbind/cppbind.h.
template <class T>
Description describe(const ClassRegisterBase* reg = nullptr,
                     boost::shared_ptr<const ConverterTable> converters = nullptr);

}  // namespace cppbind
