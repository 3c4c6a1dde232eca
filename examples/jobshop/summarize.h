// The result of a run for its user.
#pragma once

#include <libvarrow/host/Summary.h>

#include "JobShopData.h"

namespace jobshop {

/// States instance, makespan, clock times and the verdict of the rules, as far as `data` has them.
void summarize(const JobShopData& data, libvarrow::Summary& summary);

}  // namespace jobshop
