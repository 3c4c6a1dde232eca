// A plug-in that registers classes, one of them already while it is loaded. Built once more, its
// entry then throws an error of a type of its own.
#include <boost/dll/alias.hpp>
#include <iostream>

#include "libvarrow/module/Module.h"
#include "libvarrow/utility/PlugInBuild.h"
#include "libvarrow/utility/RegistersManager.h"

namespace {

struct Greeter : cppbind::Object {
  ~Greeter() override { std::cout << "greeter gone\n"; }
};

struct OwnError : std::exception {
  const char* what() const noexcept override { return "out of order"; }
};

struct Faulty : cppbind::Object {
  void setBind(cppbind::Binder* binder, bool) {
    bool isOwnFault = false;
    binder->bind("own", isOwnFault);
    if (isOwnFault) throw OwnError();
    throw cppbind::ParseErrorException("own", "should be true");
  }
};

struct Paint : libvarrow::Module {
  void setBind(cppbind::Binder* binder, bool) {
    binder->field("coats", coats).between(1, 3).about("How often.");
    binder->bind("modules", modules, {});
  }
  void processImp(libvarrow::ModuleData*) override {}
  int coats = 0;
  std::map<std::string, boost::shared_ptr<Module>> modules;
};

cppbind::ClassRegister& classes() {
  return *libvarrow::RegistersManager::createRegister("plug-ins");
}

[[maybe_unused]] const bool isRegisteredEarly = [] {
  classes().regClass<Greeter>("Early");
  return true;
}();

void registerClasses() {
  classes().regClass<Greeter>("Greeter");
  classes().regClass<Faulty>("Faulty");
  classes().regClass<Paint>("Paint");
#ifdef THROWING
  throw OwnError();
#endif
  std::cout << "initModule\n";
}

}  // namespace

BOOST_DLL_ALIAS(registerClasses, initModule)
LIBVARROW_PLUG_IN_BUILD();
