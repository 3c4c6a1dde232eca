// A plug-in whose entry throws an error of a type of its own after it registered a class.
#include <boost/dll/alias.hpp>
#include <exception>

#include "libvarrow/utility/RegistersManager.h"

namespace {

struct OwnError : std::exception {
  const char* what() const noexcept override { return "no licence"; }
};
struct Half : cppbind::Object {};

void registerClasses() {
  libvarrow::RegistersManager::createRegister("plug-ins")->regClass<Half>("Half");
  throw OwnError();
}

}  // namespace

BOOST_DLL_ALIAS(registerClasses, initModule)
