// A plug-in: one module for the bakery.
#include <libvarrow/module/Module.h>
#include <libvarrow/utility/PlugInBuild.h>
#include <libvarrow/utility/RegistersManager.h>

#include <boost/dll/alias.hpp>

#include "BakeryData.h"

namespace {

class Ice : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->bind("flavour", flavour_, "vanilla");
  }
  void processImp(libvarrow::ModuleData* data) override {
    dynamic_cast<BakeryData&>(*data).steps.push_back("ice with " + flavour_);
  }

 private:
  std::string flavour_;
};

void registerClasses() {
  libvarrow::RegistersManager::createRegister(kBakeryModules)->regClass<Ice>("Ice");
}

}  // namespace

// The host looks up this alias and calls the function once, right after loading.
BOOST_DLL_ALIAS(registerClasses, initModule)
// The host refuses a plug-in that was built against another major version or another ABI.
LIBVARROW_PLUG_IN_BUILD();
