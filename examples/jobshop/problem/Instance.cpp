#include "problem/Instance.h"

namespace jobshop {

std::size_t Instance::operationCount() const {
  std::size_t count = 0;
  for (const auto& job : jobs) count += job.size();
  return count;
}

}  // namespace jobshop
