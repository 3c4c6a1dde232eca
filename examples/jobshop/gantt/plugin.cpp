// The function that the program calls when it loads this plug-in.
#include <libvarrow/utility/PlugInBuild.h>
#include <libvarrow/utility/RegistersManager.h>

#include <boost/dll/alias.hpp>

#include "gantt/DrawGantt.h"
#include "modules/registerModules.h"

static void registerClasses() {
  libvarrow::RegistersManager::createRegister(jobshop::kModuleRegister)
      ->regClass<jobshop::DrawGantt>("DrawGantt");
}
BOOST_DLL_ALIAS(registerClasses, initModule)
LIBVARROW_PLUG_IN_BUILD();
