// The summary that the program prints at the end.
#pragma once

#include "JobShopData.h"
#include "RunFolder.h"

namespace jobshop {

/// Prints the result and the paths of all output to standard output.
void printSummary(const RunFolder& run, const JobShopData& data);

}  // namespace jobshop
