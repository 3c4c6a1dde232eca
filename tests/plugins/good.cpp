// A plug-in that registers a class.
#include <boost/dll/alias.hpp>
#include <iostream>

#include "libvarrow/utility/RegistersManager.h"

namespace {

struct Greeter : cppbind::Object {
  ~Greeter() override { std::cout << "greeter gone\n"; }
};

void registerClasses() {
  std::cout << "initModule\n";
  libvarrow::RegistersManager::createRegister("plug-ins")->regClass<Greeter>("Greeter");
}

}  // namespace

BOOST_DLL_ALIAS(registerClasses, initModule)
