// Shortens a schedule by tabu searches that start between the best schedules so far.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "improve/SearchCourse.h"
#include "improve/ShopGraph.h"
#include "improve/TabuSearch.h"
#include "problem/Instance.h"
#include "schedule/Schedule.h"

namespace jobshop {

struct EliteSettings {
  TabuSettings tabu;
  std::size_t elites = 10;  ///< the number of schedules to combine, at least 2
  std::uint64_t seed = 1;
};

/// Search that fills a pool with the results of tabu searches: the first starts from the given
/// schedule, the others from random ones. Then each search starts between two schedules of the
/// pool, and its result replaces the longest one unless it is longer. When that no longer helps,
/// the pool is filled anew. Not thread-safe.
///
/// The same schedule, settings and number of iterations give the same result on every machine.
class EliteSearch {
 public:
  /// Starts from a feasible schedule of `instance`.
  EliteSearch(const Instance& instance, const std::vector<ScheduledOperation>& start,
              const EliteSettings& settings);

  /// Searches until `watch` ends it, or a schedule is as short as `lowerBound`. Returns the
  /// shortest schedule, which is not longer than the start.
  std::vector<ScheduledOperation> run(SearchWatch& watch, Time lowerBound);

 private:
  void fill(TabuSearch& search, const SearchCourse& course);
  void combine(TabuSearch& search, const SearchCourse& course);
  OrderedShop searchFrom(OperationOrder order, TabuSearch& search);
  OperationOrder randomOrder();
  OperationOrder between(const OperationOrder& a, const OperationOrder& b);

  ShopGraph graph_;
  const EliteSettings settings_;
  std::mt19937_64 random_;
  OrderedShop best_;
  std::vector<OrderedShop> pool_;
};

}  // namespace jobshop
