// A host that installs the error handler twice and ends in the ordinary way.
#include <iostream>

#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/log/log.h"

int main() {
  InitRootLogger("none");
  libvarrow::init_error_handler(false);
  libvarrow::init_error_handler(true);
  std::cout << "main ends\n";
}
