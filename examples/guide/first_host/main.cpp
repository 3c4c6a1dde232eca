// A complete host: reads orders, sorts them, and computes when each is done.
// [main]
#include "orders.h"

int main(int argc, char** argv) {
  libvarrow::Host host("orders", "Plans orders on one machine.");
  registerClasses(host);
  return host.run<PlanData>(argc, argv);
}
// [/main]
