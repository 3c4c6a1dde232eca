// The program of the library: a host without classes.
#include <libvarrow/host/Host.h>

int main(int argc, char** argv) {
  libvarrow::Host host("varrow", "Works on runs of programs that use libvarrow.");
  host.setPluginFolder("");
  return host.run(argc, argv);
}
