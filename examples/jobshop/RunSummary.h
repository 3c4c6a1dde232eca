// What the program tells the user in the end.
#pragma once

#include "JobShopData.h"
#include "RunFolder.h"

namespace jobshop {

/// The result and where everything is, on standard output.
void printSummary(const RunFolder& run, const JobShopData& data);

}  // namespace jobshop
