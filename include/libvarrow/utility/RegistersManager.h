// Named class registries.
#pragma once

#include <boost/shared_ptr.hpp>
#include <map>
#include <string>

#include "cppbind/ClassRegister.h"
#include "cppbind/imp/binder.h"
#include "libvarrow/Export.h"

namespace libvarrow {

/// The process's named class registries, for example one for each family of classes. Names of
/// registries are compared exactly; class names in a registry are not.
///
///     auto modules = libvarrow::RegistersManager::createRegister("modules");   // in a plug-in
///     modules->regClass<Dispatch>("Dispatch");
///     ...
///     auto* reg = libvarrow::RegistersManager::getRegister("modules");         // in the host
///
/// Not thread-safe, except the creation of the instance: register and unregister classes while no
/// other thread uses the registries.
class LIBVARROW_API RegistersManager {
 public:
  /// Returns the instance, which exists from loading to the end of the process.
  static RegistersManager& instance() noexcept;

  /// Returns the registry of that name; creates it if needed.
  static boost::shared_ptr<cppbind::ClassRegister> createRegister(const std::string& name);

  /// Returns the registry of that name, or null. Valid while the manager holds it: until its last
  /// class is unregistered.
  static cppbind::ClassRegister* getRegister(const std::string& name);

  /// Makes the binder create objects from that registry (from none when the name is unknown) until
  /// the last holder releases the result. Release it before the registry is destroyed.
  [[nodiscard]] static boost::shared_ptr<cppbind::Backup> useRegister(const std::string& name,
                                                                      cppbind::Binder* binder);

  /// Removes a class from a registry, and the registry from the manager if it is then empty.
  /// Returns false when the registry or the class does not exist.
  static bool unregister(const std::string& registerName, const std::string& className);

  /// Removes the classes whose code `owner` keeps loaded from all registries, and the registries
  /// that become empty. Called when a plug-in is unloaded.
  static void unregisterAllOf(const cppbind::CodeOwner& owner);

 private:
  std::map<std::string, boost::shared_ptr<cppbind::ClassRegister>> registers_;
};

}  // namespace libvarrow
