// The describer: collects the description of types while their fields are bound.
#pragma once

#include <json/value.h>

#include <boost/shared_ptr.hpp>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <typeinfo>

#include "cppbind/Description.h"
#include "cppbind/Export.h"

namespace cppbind {

class Checker;
class ObjFactory;

namespace detail {
class Collector;
struct DescriberAccess;
class TimeTexts;
}  // namespace detail

/// Argument of FieldCodec<T>::describe(), which says what a value of the type may be:
///
///     static void describe(ValueDescription& value, Describer&) {
///       value.kind = ValueKind::Enumeration;
///       value.names = {"normal", "urgent"};
///     }
///
/// A describer exists for one call of cppbind::describe(). Not thread-safe.
class CPPBIND_API Describer {
 public:
  /// Creates a describer with the register (may be null) and the converters (null: the standard
  /// ones) of the binder that will read.
  Describer(const ClassRegisterBase* reg, boost::shared_ptr<const ConverterTable> converters);
  Describer(const Describer&) = delete;
  Describer& operator=(const Describer&) = delete;
  ~Describer();

  /// Describes `T` by its codec. The value remains ValueKind::Any when the codec has no describe().
  template <class T>
  void describe(ValueDescription& value);

  /// Describes a list, a set or a map of elements of `T`.
  template <class T>
  void describeElements(ValueDescription& value, ValueKind kind) {
    describe<T>(addElements(value, kind));
  }

  /// Describes text of the converter for `type`. Returns false when the binder has none.
  bool describeText(ValueDescription& value, const std::type_info& type);
  /// Describes a class with a setBind. Each record is described once.
  void describeRecord(ValueDescription& value, const detail::RecordType& type);
  /// Describes an object of one of the classes in the register that `fits` accepts.
  void describeObject(ValueDescription& value, bool (*fits)(const ObjFactory&));

 private:
  friend class Checker;
  friend class detail::Collector;
  friend class detail::ObjectNotes;
  friend class detail::TimeTexts;
  friend struct detail::DescriberAccess;  // for functions: GCC refuses a friend function of a DLL
  struct Known;

  // RAII guard: objects are of classes in `reg`; null: in the binder's register.
  class RegisterScope {
   public:
    RegisterScope(Describer& describer, const ClassRegisterBase* reg);
    ~RegisterScope();
    RegisterScope(const RegisterScope&) = delete;
    RegisterScope& operator=(const RegisterScope&) = delete;

   private:
    Describer& describer_;
    const ClassRegisterBase* before_;
  };

  static ValueDescription& addElements(ValueDescription& value, ValueKind kind);
  void describeField(FieldDescription& field, const detail::FieldType& type);
  // Sets the default to the JSON form of `value`, if it has one.
  void setDefault(FieldDescription& field, const detail::FieldType& type, const void* value) const;
  template <class BindFields>
  void describeFields(ObjectDescription& object, const BindFields& bindFields);
  const std::string& classId(const std::string& name, const boost::shared_ptr<ObjFactory>& factory);
  Description result(ValueDescription root);
  // Each returns what is described already, or null.
  const ObjectDescription* findClass(const ObjFactory& factory, const ClassRegisterBase* reg) const;
  const ObjectDescription* findRecord(const std::type_info& type,
                                      const ClassRegisterBase* reg) const;
  const std::list<ObjectDescription>& classes() const;
  const std::list<ObjectDescription>& records() const;

  std::unique_ptr<Known> known_;
};

}  // namespace cppbind

#include "cppbind/imp/binder.h"
