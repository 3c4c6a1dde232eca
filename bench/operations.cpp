#include "operations.h"

#include <cstddef>
#include <random>

namespace bench {

const Plan& samplePlan() {
  static const Plan plan = [] {
    constexpr int kCount = 10000;
    const boost::posix_time::ptime begin(boost::gregorian::date(2024, 3, 5));
    std::mt19937 random(1);
    Plan made;
    for (int i = 0; i < kCount; ++i) {
      // Machine names of 2 to 20 characters: some fit in the string object, some need the heap.
      made.operations.push_back(
          {i, static_cast<double>(random() % 4000) / 4, "M" + std::string(random() % 19 + 1, 'x'),
           begin + boost::posix_time::seconds(static_cast<long>(random() % 100000000)),
           random() % 2 == 0});
    }
    return made;
  }();
  return plan;
}

}  // namespace bench
