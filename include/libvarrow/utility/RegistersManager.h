// Named class registers.
#pragma once

#include <boost/shared_ptr.hpp>
#include <map>
#include <string>

#include "cppbind/ClassRegister.h"
#include "cppbind/imp/binder.h"
#include "libvarrow/Export.h"

namespace libvarrow {

/// The process's named class registers, for example one for each family of classes. Names of
/// registers are compared exactly; class names in a register are not.
///
///     auto modules = libvarrow::RegistersManager::createRegister("modules");   // in a plug-in
///     modules->regClass<Dispatch>("Dispatch");
///     ...
///     auto* reg = libvarrow::RegistersManager::getRegister("modules");         // in the host
///
/// Not thread-safe, except the creation of the instance: register and unregister classes while no
/// other thread uses the registers.
class LIBVARROW_API RegistersManager {
 public:
  /// Returns the instance, which exists from loading to the end of the process.
  static RegistersManager& instance() noexcept;

  /// Returns the register of that name; creates it if needed.
  static boost::shared_ptr<cppbind::ClassRegister> createRegister(const std::string& name);

  /// Returns the register of that name, or null. Valid while the manager holds it: until its last
  /// class is unregistered.
  static cppbind::ClassRegister* getRegister(const std::string& name);

  /// Makes the binder create objects from that register (from none when the name is unknown) until
  /// the last holder releases the result. Release it before the register is destroyed.
  [[nodiscard]] static boost::shared_ptr<cppbind::Backup> useRegister(const std::string& name,
                                                                      cppbind::Binder* binder);

  /// Removes a class from a register, and the register from the manager if it is then empty.
  /// Returns false when the register or the class does not exist.
  static bool unregister(const std::string& registerName, const std::string& className);

  /// Removes the classes whose code `owner` keeps loaded from all registers, and the registers
  /// that become empty. Called when a plug-in is unloaded.
  static void unregisterAllOf(const cppbind::CodeOwner& owner);

 private:
  std::map<std::string, boost::shared_ptr<cppbind::ClassRegister>> registers_;
};

}  // namespace libvarrow
