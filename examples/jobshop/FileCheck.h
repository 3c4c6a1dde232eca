// Finds everything that is wrong in the files of a run before it begins.
#pragma once

#include <cppbind/ClassRegister.h>

#include <cstddef>

#include "RunFolder.h"

namespace jobshop {

/// Checks the pipeline file and all rule files that it names. `modules` are the classes of the
/// pipeline. Logs each fault and prints it to standard error as compilers do:
///
///     shop/pipeline.json:3:7: error: modules[1]: Dispach miss register; did you mean "Dispatch"?
///
/// Returns the number of errors; warnings do not count.
std::size_t reportFaults(const RunFolder& run, const cppbind::ClassRegister& modules);

}  // namespace jobshop
