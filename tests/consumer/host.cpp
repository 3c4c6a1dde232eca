// A host of the library of hosts, outside the tree.
#include <libvarrow/host/Host.h>

#include <iostream>

class Step : public libvarrow::Module {
 public:
  void processImp(libvarrow::ModuleData*) override { std::cout << "a step\n"; }
};

int main(int argc, char** argv) {
  libvarrow::Host host("steps", "Makes steps.");
  host.regClass<Step>("Step");
  return host.run<libvarrow::ModuleData>(argc, argv);
}
