// The numbers that the text benchmarks write.
#pragma once

#include <vector>

namespace bench {

/// Returns 4096 doubles, in turn hours in quarters (7.25), prices in cents (129.99), random
/// fractions with all their digits, and whole numbers; always the same.
const std::vector<double>& sampleDoubles();

}  // namespace bench
