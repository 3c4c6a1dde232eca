#include "libvarrow/module/ChainedModuleV2.h"

#include <utility>

#include "module/chain_runner.h"

namespace libvarrow {

void ChainedModuleV2::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->about("Runs modules in order.");
  binder->field("modules", modules_).about("The modules, in their order.");
}

void ChainedModuleV2::addModule(boost::shared_ptr<Module> module) {
  modules_.push_back(std::move(module));
}

Json::Value ChainedModuleV2::getJsonValue4Bind() const {
  return Json::Value();
}

void ChainedModuleV2::processImp(ModuleData* data) {
  const std::string chainPath = data->dumpPath;
  // The size is read each time, because a module may add modules to its chain.
  for (std::size_t i = 0; i < modules_.size(); ++i) {
    // Holds a reference, so that a module that changes the chain is not destroyed while it runs.
    // The pointer itself asserts that it is not null.
    const boost::shared_ptr<Module> module = modules_[i];
    runChainedStep(*module, i, chainPath, *data);
  }
}

}  // namespace libvarrow
