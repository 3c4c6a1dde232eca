// Class registries under names.
#pragma once

#include <boost/shared_ptr.hpp>
#include <map>
#include <string>

#include "cppbind/ClassRegister.h"
#include "cppbind/imp/binder.h"
#include "libvarrow/Export.h"

namespace libvarrow {

/// The process's named class registries, one for each family of classes, say. Names are compared
/// exactly; class names in a registry are not.
///
///     auto modules = libvarrow::RegistersManager::createRegister("modules");   // in a plug-in
///     modules->regClass<Dispatch>("Dispatch");
///     ...
///     auto* reg = libvarrow::RegistersManager::getRegister("modules");         // in the host
///
/// Only making the instance is synchronised: register and unregister while no other thread looks.
class LIBVARROW_API RegistersManager {
 public:
  /// Made when the library is loaded, and there until the process ends.
  static RegistersManager& instance() noexcept;

  /// The registry of that name, made if there is none.
  static boost::shared_ptr<cppbind::ClassRegister> createRegister(const std::string& name);

  /// The registry of that name, or null. Valid while it stays in the manager: until its last class
  /// is unregistered.
  static cppbind::ClassRegister* getRegister(const std::string& name);

  /// Has the binder create objects from that registry (from none when the name is unknown) until
  /// the last holder releases the result, which must be before the registry goes away.
  [[nodiscard]] static boost::shared_ptr<cppbind::Backup> useRegister(const std::string& name,
                                                                      cppbind::Binder* binder);

  /// Takes a class out of a registry, and the registry out of the manager when it is empty then.
  /// False when there is no such registry or class.
  static bool unregister(const std::string& registerName, const std::string& className);

  /// Takes out, everywhere, the classes whose code `owner` keeps loaded, and the registries that
  /// this leaves empty. Called when a plug-in goes.
  static void unregisterAllOf(const cppbind::CodeOwner& owner);

 private:
  std::map<std::string, boost::shared_ptr<cppbind::ClassRegister>> registers_;
};

}  // namespace libvarrow
