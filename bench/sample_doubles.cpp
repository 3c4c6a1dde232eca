#include "sample_doubles.h"

#include <cstddef>
#include <random>

namespace bench {

const std::vector<double>& sampleDoubles() {
  static const std::vector<double> doubles = [] {
    constexpr std::size_t kCount = 4096;
    std::mt19937 random(2);
    std::vector<double> made;
    while (made.size() < kCount) {
      made.push_back(static_cast<double>(random() % 400) / 4);
      made.push_back(static_cast<double>(random() % 1000000) / 100);
      made.push_back(static_cast<double>(random()) / 4294967296.0 * 1000);
      made.push_back(static_cast<double>(random() % 100000));
    }
    return made;
  }();
  return doubles;
}

}  // namespace bench
