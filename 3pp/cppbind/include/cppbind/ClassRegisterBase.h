// The register of classes by name, which creates objects by class name.
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

/// Class in a register.
struct RegisteredClass {
  std::string name;                       ///< as it was registered
  boost::shared_ptr<ObjFactory> factory;  ///< its factory
};

/// Register that maps class names, ignoring case, to factories.
///
/// Register classes at start-up from one thread. Lookups are thread-safe while no thread changes
/// the register.
class CPPBIND_API ClassRegisterBase {
 public:
  /// Registers `factory` (not null) under `className`. Aborts when the name, ignoring case, is
  /// taken, after printing "Error ... alread registered ..." to standard output and both classes
  /// with the names of their plug-ins to standard error.
  void regClass(std::string className, boost::shared_ptr<ObjFactory> factory);

  /// Removes the class; returns false when the name is not registered. Existing objects are not
  /// affected.
  bool unregClass(const std::string& className);
  /// Removes every class whose code `owner` keeps loaded.
  void unregClassesOf(const CodeOwner& owner);
  /// Returns true when no class is registered.
  bool empty() const { return classes_.empty(); }
  /// Returns all classes by their names in lower case.
  const std::map<std::string, RegisteredClass>& classes() const { return classes_; }

  /// Returns the factory for `className`, which the register keeps alive, or null.
  ObjFactory* find(const std::string& className) const;
  /// Returns the factory for `className`, which the register keeps alive. Throws
  /// ClassMissRegException, after printing the name to standard output, when it is not registered.
  ObjFactory& findFactory(const std::string& className) const;

  /// Creates an object of the class `className`, reads its fields from `json` and returns it; the
  /// caller owns it. `binder` is the decode binder in use; null: a strict one without register.
  /// Throws ClassMissRegException when the class is unknown or not a `T`, and ParseErrorException,
  /// with the class name in its path, when a field does not parse. Exceptions of the class's
  /// constructor pass unchanged. (Where JSON names the class, as in a list of modules, they become
  /// a ParseErrorException, except std::bad_alloc.)
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

  std::map<std::string, RegisteredClass> classes_;  // keys in lower case
};

}  // namespace cppbind
