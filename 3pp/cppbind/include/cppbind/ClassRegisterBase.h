// The registry of classes by name, and creation of objects by class name.
#pragma once

#include <json/value.h>

#include <boost/shared_ptr.hpp>
#include <map>
#include <memory>
#include <string>

#include "cppbind/CodeOwner.h"
#include "cppbind/Export.h"
#include "cppbind/Object.h"
#include "cppbind/ParseErrorException.h"

namespace cppbind {

class BinderImpBase;
class ObjFactory;

/// Class name to factory. Names are matched without regard to case.
///
/// Register at start-up from one thread; lookups of a registry that nobody changes are thread safe.
class CPPBIND_API ClassRegisterBase {
 public:
  /// Registers `factory` (not null) under `className`. A name that is taken, whatever its case,
  /// prints "Error ... alread registered ..." to standard output, both classes with the names of
  /// their plug-ins to standard error, and ends the process.
  void regClass(std::string className, boost::shared_ptr<ObjFactory> factory);

  /// Takes the class out again; false when there is none of that name. Objects that were created
  /// live on.
  bool unregClass(const std::string& className);
  /// Takes out every class whose code `owner` keeps loaded.
  void unregClassesOf(const CodeOwner& owner);
  /// Whether no class is registered.
  bool empty() const { return factories_.empty(); }

  /// The factory for `className`, kept alive by the registry. A name that is not registered is
  /// printed to standard output and throws ClassMissRegException.
  ObjFactory& findFactory(const std::string& className) const;

  /// Creates an object of the class `className` and reads its fields from `json`; the caller owns
  /// the result. `binder` is the decode binder in use, or null for a strict one without registry.
  /// Throws ClassMissRegException for an unknown class, or one that is no `T`, and
  /// ParseErrorException, with the class name in its path, for fields that do not parse; what the
  /// class's constructor throws passes as it is. (Where JSON names the class, as in a list of
  /// modules, that becomes a ParseErrorException, too, unless it is std::bad_alloc.)
  ///
  ///     std::unique_ptr<Module> m(reg.create<Module>("Dispatch", fields, &binder));
  template <class T = Object>
  T* create(const std::string& className, const Json::Value& json,
            BinderImpBase* binder = nullptr) const {
    std::unique_ptr<Object> object = createObject(className, json, binder);
    T* wanted = dynamic_cast<T*>(object.get());
    if (wanted == nullptr) throw ClassMissRegException(className);
    static_cast<void>(object.release());
    return wanted;
  }

 private:
  std::unique_ptr<Object> createObject(const std::string& className, const Json::Value& json,
                                       BinderImpBase* binder) const;

  std::map<std::string, boost::shared_ptr<ObjFactory>> factories_;  // keys in lower case
};

}  // namespace cppbind
