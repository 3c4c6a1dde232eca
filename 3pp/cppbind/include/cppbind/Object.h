// The base class of all classes that are created by name.
#pragma once

#include <json/value.h>

#include <string>
#include <typeinfo>

#include "cppbind/Assert.h"
#include "cppbind/Export.h"

namespace cppbind {

/// Returns the readable (demangled) name of a type, such as "jobshop::Dispatch".
CPPBIND_API std::string typeName(const std::type_info& type);

/// Base of all classes that are created by name. A class declares its fields in a public,
/// non-virtual `void setBind(cppbind::Binder*, bool)`; see imp/binder.h.
///
/// An object created by name (see ClassRegisterBase) overrides all three member functions: it knows
/// its class name, writes itself back, and keeps its creation record.
class CPPBIND_API Object {
 public:
  Object() = default;
  Object(const Object&) = default;
  Object(Object&&) = default;
  Object& operator=(const Object&) = default;
  Object& operator=(Object&&) = default;
  virtual ~Object();

  /// Returns the object's JSON form, {"ClassName": {fields}}. The base version, for objects not
  /// created by name, aborts with the failed assertion "false".
  virtual Json::Value getJsonValue4Bind() const {
    CPPBIND_ASSERT(false);
    return Json::Value();
  }

  /// Returns the class name: the name that the object was created under, otherwise its run-time
  /// type name.
  virtual std::string dumpStr() const;

  /// Returns {"baseProperty": ..., "originParameter": ...} for an object created by name, otherwise
  /// null.
  virtual Json::Value getBaiscInfoJson() const;
};

}  // namespace cppbind
