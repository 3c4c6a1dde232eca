// A module in a plug-in.
#include <libvarrow/libvarrow.h>

#include <boost/dll/alias.hpp>
#include <cstdio>

namespace {

class Shout : public libvarrow::Module {
 public:
  void processImp(libvarrow::ModuleData* data) override { std::puts(data->dumpPath.c_str()); }
};

void registerClasses() {
  libvarrow::RegistersManager::createRegister("modules")->regClass<Shout>("Shout");
}

}  // namespace

BOOST_DLL_ALIAS(registerClasses, initModule)
LIBVARROW_PLUG_IN_BUILD();
