#include "libvarrow/module/ChainedModule.h"

#include <utility>

#include "module/chain_runner.h"

namespace libvarrow {

void ChainedModule::Data4Bind::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->about("Runs modules in order.");
  if (!binder->isReading()) return binder->bind("modules", modules);
  std::vector<boost::shared_ptr<Module>> created;
  binder->field("modules", created).about("The modules, in their order.");
  modules.insert(modules.end(), created.begin(), created.end());
}

void ChainedModule::addModule(boost::shared_ptr<Module> module) {
  record_.modules.push_back(std::move(module));
}

Json::Value ChainedModule::getJsonValue4Bind() const {
  return Json::Value();
}

void ChainedModule::processImp(ModuleData* data) {
  const std::string chainPath = data->dumpPath;
  // The size is read each time, because a module may add modules to its chain.
  for (std::size_t i = 0; i < record_.modules.size(); ++i) {
    // Neither counts references nor checks for null; ChainedModuleV2 does both.
    runChainedStep(*record_.modules[i].get(), i, chainPath, *data);
  }
}

}  // namespace libvarrow
