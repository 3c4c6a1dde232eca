// A host that runs its own modules and modules of plug-ins.
#include <libvarrow/env/process_init.h>
#include <libvarrow/log/log.h>
#include <libvarrow/module/ChainedModule.h>
#include <libvarrow/module/ModuleExecutor.h>
#include <libvarrow/utility/DllManager.h>
#include <libvarrow/utility/RegistersManager.h>

#include <iostream>

#include "BakeryData.h"

namespace {

class Bake : public libvarrow::Module {
 public:
  void processImp(libvarrow::ModuleData* data) override {
    dynamic_cast<BakeryData&>(*data).steps.emplace_back("bake");
  }
};

}  // namespace

// [main]
int main(int argc, char** argv) {
  libvarrow::porcessCommonInit();
  InitRootLogger("log.conf");
  const char* folder = argc > 2 ? argv[2] : "plugins";

  // Before the data and outside the try block: it must outlive all objects that come from plug-ins,
  // including exceptions.
  libvarrow::DllManager plugins;
  BakeryData bakery;
  bakery.dumpPath = "run/";
  try {
    const auto modules = libvarrow::RegistersManager::createRegister(kBakeryModules);
    modules->regClass<libvarrow::ChainedModule>("ChainedModule");
    modules->regClass<Bake>("Bake");
    plugins.autoLoad(folder);  // in the current directory, else next to the program
    libvarrow::ModuleExecutor(modules.get(), argv[1], false).process(&bakery);
  } catch (const std::exception& error) {
    std::cerr << argv[1] << ": " << error.what() << std::endl;
    return 1;
  }
  for (const std::string& step : bakery.steps) std::cout << step << std::endl;
  return 0;
}
// [/main]
