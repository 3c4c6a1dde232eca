// The moves that may shorten a schedule, and estimates of their effect.
#pragma once

#include <random>
#include <vector>

#include "improve/ShopGraph.h"

namespace jobshop {

/// Returns the operations of a critical path, that is a longest path, in order; at random among
/// several.
std::vector<OperationId> criticalPath(const ShopGraph& graph, std::mt19937_64& random);

/// Returns moves within the blocks of `path`, a critical path. A block consists of operations that
/// follow each other on one machine. In a shorter schedule, some block has another first or last
/// operation; therefore each move changes one of these. Leaves out moves that could create a cycle.
/// The result is empty only for an optimal schedule, unless operations take no time or a job stays
/// on a machine.
std::vector<Move> blockMoves(const ShopGraph& graph, const std::vector<OperationId>& path);

/// Estimator of moves. Not thread-safe.
class MoveEstimator {
 public:
  explicit MoveEstimator(const ShopGraph& graph) : graph_(graph) {}

  /// Returns an upper bound of the longest path through the operations that `move` puts in another
  /// order. It is exact when the move swaps two neighbours. The makespan after the move is not
  /// above the larger one of the estimate and the makespan before.
  Time estimate(const Move& move);

 private:
  Time longestPath(Time free, Time tail);

  const ShopGraph& graph_;
  std::vector<OperationId> sequence_;  // the reordered operations, in their new order
  std::vector<Time> heads_;
};

}  // namespace jobshop
