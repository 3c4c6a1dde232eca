// A module that runs others in order and is bound directly.
#pragma once

#include <boost/shared_ptr.hpp>
#include <vector>

#include "cppbind/imp/binder.h"
#include "libvarrow/Export.h"
#include "libvarrow/module/Module.h"

namespace libvarrow {

/// A chain like ChainedModule, for pipelines whose modules are all created by the binder. It
/// declares its key "modules" itself, keeps a reference to each module while the module runs, and
/// aborts at a null module.
class LIBVARROW_API ChainedModuleV2 : public Module {
 public:
  /// Binds the key "modules". Reading appends to the existing modules.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Appends `module`; a module may add to the chain that runs it.
  void addModule(boost::shared_ptr<Module> module);
  /// Returns the modules in running order.
  const std::vector<boost::shared_ptr<Module>>& getModules() const { return modules_; }

  /// Returns null; a chain that was created by name writes itself back instead.
  Json::Value getJsonValue4Bind() const override;

  void processImp(ModuleData* data) override;

 private:
  std::vector<boost::shared_ptr<Module>> modules_;
};

}  // namespace libvarrow
