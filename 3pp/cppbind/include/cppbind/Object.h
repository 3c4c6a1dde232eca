// The base of every class that is created by name.
#pragma once

#include <json/value.h>

#include <string>
#include <typeinfo>

#include "cppbind/Assert.h"
#include "cppbind/Export.h"

namespace cppbind {

/// Readable (demangled) name of a type, such as "jobshop::Dispatch".
CPPBIND_API std::string typeName(const std::type_info& type);

/// Base of every class that is created by name. A class declares its fields in a public,
/// non-virtual `void setBind(cppbind::Binder*, bool)`; see imp/binder.h.
///
/// An object that was created by name (see ClassRegisterBase) overrides all three operations: it
/// knows its class name, writes itself back, and remembers what it was made from.
class CPPBIND_API Object {
 public:
  Object() = default;
  Object(const Object&) = default;
  Object(Object&&) = default;
  Object& operator=(const Object&) = default;
  Object& operator=(Object&&) = default;
  virtual ~Object();

  /// The object's JSON form, {"ClassName": {fields}}. An object that was not created by name has
  /// none: the base version fails the assertion "false" and ends the process.
  virtual Json::Value getJsonValue4Bind() const {
    CPPBIND_ASSERT(false);
    return Json::Value();
  }

  /// The class name: the one that the object was created under, else its run-time type name.
  virtual std::string dumpStr() const;

  /// {"baseProperty": ..., "originParameter": ...} of an object created by name, else null.
  virtual Json::Value getBaiscInfoJson() const;
};

}  // namespace cppbind
