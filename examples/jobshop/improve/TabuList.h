// The orders that a tabu search must not restore for a while.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "improve/ShopGraph.h"

namespace jobshop {

/// Pairs of operations, each forbidden to have this order on its machine until an iteration. Its
/// memory is fixed: a new pair may displace one that is forbidden, which is rare
/// unless the tenure is long.
class TabuList {
 public:
  TabuList() : entries_(std::size_t{1} << kBits) {}

  /// Forbids `before` before `after` until the iteration `end`.
  void forbid(OperationId before, OperationId after, std::uint64_t end) {
    entries_[placeOf(before, after)] = {before, after, end};
  }

  bool isForbidden(OperationId before, OperationId after, std::uint64_t iteration) const {
    const Entry& entry = entries_[placeOf(before, after)];
    return entry.end > iteration && entry.before == before && entry.after == after;
  }

 private:
  struct Entry {
    OperationId before = 0;
    OperationId after = 0;
    std::uint64_t end = 0;
  };
  static constexpr unsigned kBits = 14;

  // Multiplies by a large odd number, which spreads the pairs over the upper bits.
  static std::size_t placeOf(OperationId before, OperationId after) {
    const std::uint64_t pair = std::uint64_t{before} << 32 | after;
    return static_cast<std::size_t>(pair * 0x9E3779B97F4A7C15U >> (64 - kBits));
  }

  std::vector<Entry> entries_;
};

}  // namespace jobshop
