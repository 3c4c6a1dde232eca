// A small host for the tests.
#include <cstdlib>

#include "host/modules.h"

int main(int argc, char** argv) {
  libvarrow::Host host("orders", "Plans orders.");
  host_test::registerOrders(host);
  host.addFileSetting("orders", "Receive.file", "the orders");
  return host.run(argc, argv, [] {
    if (std::getenv("NO_ORDERS") != nullptr) throw std::runtime_error("no orders");
    return std::make_unique<host_test::Orders>();
  });
}
