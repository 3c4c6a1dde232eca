// A module that runs others in order, bound directly.
#pragma once

#include <boost/shared_ptr.hpp>
#include <vector>

#include "cppbind/imp/binder.h"
#include "libvarrow/Export.h"
#include "libvarrow/module/Module.h"

namespace libvarrow {

/// As ChainedModule, for pipelines whose modules are all created by the binder: it declares its
/// key "modules" itself, keeps a reference to each module while that runs, and stops the process at
/// a null module.
class LIBVARROW_API ChainedModuleV2 : public Module {
 public:
  /// Reading appends to the modules there are.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Appends; a module may add to the chain that runs it.
  void addModule(boost::shared_ptr<Module> module);
  /// In the order in which they run.
  const std::vector<boost::shared_ptr<Module>>& getModules() const { return modules_; }

  /// Null; a chain that was created by name writes itself back instead.
  Json::Value getJsonValue4Bind() const override;

  void processImp(ModuleData* data) override;

 private:
  std::vector<boost::shared_ptr<Module>> modules_;
};

}  // namespace libvarrow
