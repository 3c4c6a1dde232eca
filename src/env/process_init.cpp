#include "libvarrow/env/process_init.h"

#include <omp.h>

#include <cmath>
#include <iostream>

#include "libvarrow/backtrace/BackTrace.h"

namespace libvarrow {

unsigned int openMPThreadCount(int processors) {
  constexpr int kManyProcessors = 100;
  // Leaves processors to the rest of the machine; on the largest machines, memory is the limit.
  const double factor = processors > kManyProcessors ? 0.5 : 0.9;
  return static_cast<unsigned int>(std::ceil(processors * factor));
}

OpenMPInit::OpenMPInit() {
  const int processors = omp_get_num_procs();
  std::cout << "physical_cores=" << processors << std::endl;
  const unsigned int threads = openMPThreadCount(processors);
  omp_set_num_threads(static_cast<int>(threads));
  std::cout << "reset openmp parallel threads number from:" << processors << " to " << threads
            << std::endl;
}

void porcessCommonInit() {
  init_error_handler(false);
  const OpenMPInit openMP;
}

}  // namespace libvarrow
