#include "libvarrow/utility/RegistersManager.h"

#include <boost/make_shared.hpp>

namespace libvarrow {

namespace {

// Creates the manager when the library is loaded, so that it outlives every static object of a
// host, which may still hold plug-ins.
[[maybe_unused]] const RegistersManager& madeAtLoad = RegistersManager::instance();

}  // namespace

RegistersManager& RegistersManager::instance() noexcept {
  static RegistersManager manager;
  return manager;
}

boost::shared_ptr<cppbind::ClassRegister> RegistersManager::createRegister(
    const std::string& name) {
  auto& registers = instance().registers_;
  const auto found = registers.find(name);
  if (found != registers.end()) return found->second;
  // Creates the register before its map entry, so that std::bad_alloc leaves no empty entry.
  return registers.emplace(name, boost::make_shared<cppbind::ClassRegister>()).first->second;
}

cppbind::ClassRegister* RegistersManager::getRegister(const std::string& name) {
  const auto& registers = instance().registers_;
  const auto found = registers.find(name);
  return found == registers.end() ? nullptr : found->second.get();
}

boost::shared_ptr<cppbind::Backup> RegistersManager::useRegister(const std::string& name,
                                                                 cppbind::Binder* binder) {
  return binder->implementation()->replaceClassRegister(getRegister(name));
}

bool RegistersManager::unregister(const std::string& registerName, const std::string& className) {
  auto& registers = instance().registers_;
  const auto found = registers.find(registerName);
  if (found == registers.end()) return false;
  const bool wasThere = found->second->unregClass(className);
  if (found->second->empty()) registers.erase(found);
  return wasThere;
}

void RegistersManager::unregisterAllOf(const cppbind::CodeOwner& owner) {
  auto& registers = instance().registers_;
  for (auto entry = registers.begin(); entry != registers.end();) {
    const bool wasEmpty = entry->second->empty();
    entry->second->unregClassesOf(owner);
    const bool isEmptied = !wasEmpty && entry->second->empty();
    entry = isEmptied ? registers.erase(entry) : std::next(entry);
  }
}

}  // namespace libvarrow
