// A plug-in that needs a function that nothing has, though its entry does not call it.
#include <boost/dll/alias.hpp>

extern "C" void nowhere();
extern "C" void callNowhere() {
  nowhere();
}

static void registerClasses() {}

BOOST_DLL_ALIAS(registerClasses, initModule)
