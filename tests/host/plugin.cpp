// A plug-in of the small host.
#include <boost/dll/alias.hpp>

#include "libvarrow/module/ChainedModule.h"
#include "libvarrow/utility/PlugInBuild.h"
#include "libvarrow/utility/RegistersManager.h"

namespace {

struct Added : libvarrow::Module {
  boost::shared_ptr<libvarrow::Module> chain;
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->field("chain", chain, nullptr);
  }
  // Throws when the plug-in and the library have types of their own.
  void processImp(libvarrow::ModuleData*) override {
    if (chain) static_cast<void>(dynamic_cast<libvarrow::ChainedModule&>(*chain));
  }
};

void registerClasses() {
  libvarrow::RegistersManager::createRegister("orders.modules")->regClass<Added>("Added");
}

}  // namespace

BOOST_DLL_ALIAS(registerClasses, initModule)
LIBVARROW_PLUG_IN_BUILD();
