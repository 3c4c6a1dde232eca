// A plug-in of the small host.
#include <boost/dll/alias.hpp>

#include "libvarrow/module/Module.h"
#include "libvarrow/utility/PlugInBuild.h"
#include "libvarrow/utility/RegistersManager.h"

namespace {

struct Added : libvarrow::Module {
  void setBind(cppbind::Binder*, bool) {}
  void processImp(libvarrow::ModuleData*) override {}
};

void registerClasses() {
  libvarrow::RegistersManager::createRegister("orders.modules")->regClass<Added>("Added");
}

}  // namespace

BOOST_DLL_ALIAS(registerClasses, initModule)
LIBVARROW_PLUG_IN_BUILD();
