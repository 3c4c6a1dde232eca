// Shortens a schedule by moves on its critical path, and does not undo them for a while.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "improve/SearchCourse.h"
#include "improve/ShopGraph.h"
#include "improve/TabuList.h"
#include "improve/moves.h"

namespace jobshop {

struct TabuSettings {
  std::uint64_t tenure = 12;      ///< the least number of iterations that a move is not undone
  std::uint64_t patience = 6000;  ///< the number of iterations without improvement that end a run
};

/// An order and the makespan of its schedule.
struct OrderedShop {
  OperationOrder order;
  Time makespan = 0;
};

/// Tabu search: each iteration applies the move with the best estimate, even if the schedule gets
/// longer. A move that would restore the order of a pair of operations is forbidden for a while,
/// unless it promises the shortest schedule of the run. Not thread-safe.
class TabuSearch {
 public:
  /// Works on `graph`, draws from `random` and counts in `course`; all must outlive the search.
  TabuSearch(ShopGraph& graph, const TabuSettings& settings, SearchCourse& course,
             std::mt19937_64& random);

  /// Searches from the order of the graph until the patience or the course is over. Returns the
  /// shortest schedule of this run.
  OrderedShop run();

 private:
  bool step(Time best);
  Move choose(Time best);
  bool isTabu(const Move& move) const;
  void forbidToUndo(const Move& move);

  ShopGraph& graph_;
  const TabuSettings settings_;
  SearchCourse& course_;
  std::mt19937_64& random_;
  TabuList tabu_;
  MoveEstimator estimator_;
  std::vector<Move> moves_;
};

}  // namespace jobshop
