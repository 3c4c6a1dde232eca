// A host whose plug-ins go with its static objects.
#include <iostream>
#include <memory>

#include "libvarrow/utility/DllManager.h"
#include "libvarrow/utility/RegistersManager.h"

std::unique_ptr<libvarrow::DllManager> plugins;  // NOLINT(cert-err58-cpp)

int main(int, char** arguments) {
  plugins = std::make_unique<libvarrow::DllManager>();
  plugins->findOrCreateDll("good", arguments[1]);
  libvarrow::RegistersManager::createRegister("host's own");
  std::cout << "main ends\n";
}
