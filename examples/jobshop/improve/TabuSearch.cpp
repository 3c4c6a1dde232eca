#include "improve/TabuSearch.h"

namespace jobshop {

namespace {

// Calls `visit` with each pair of operations, in its order after `move`, that `move` reverses.
// Stops when `visit` returns true, and returns that.
template <class Visit>
bool anyReversedPair(const ShopGraph& graph, const Move& move, const Visit& visit) {
  OperationId other = move.moved;
  while (other != move.target) {
    other = move.isForward ? graph[other].machineAfter : graph[other].machineBefore;
    if (move.isForward ? visit(other, move.moved) : visit(move.moved, other)) return true;
  }
  return false;
}

}  // namespace

TabuSearch::TabuSearch(ShopGraph& graph, const TabuSettings& settings, SearchCourse& course,
                       std::mt19937_64& random)
    : graph_(graph), settings_(settings), course_(course), random_(random), estimator_(graph) {}

OrderedShop TabuSearch::run() {
  OrderedShop best = {graph_.order(), graph_.makespan()};
  std::uint64_t lastImprovement = course_.iterations();
  while (!course_.isOver() && course_.iterations() - lastImprovement < settings_.patience) {
    const bool hasMoved = step(best.makespan);
    course_.count(graph_.makespan());
    if (!hasMoved) break;
    if (graph_.makespan() >= best.makespan) continue;
    best = {graph_.order(), graph_.makespan()};
    lastImprovement = course_.iterations();
  }
  return best;
}

// Returns false without a possible move.
bool TabuSearch::step(Time best) {
  moves_ = blockMoves(graph_, criticalPath(graph_, random_));
  if (moves_.empty()) return false;
  const Move move = choose(best);
  forbidToUndo(move);
  graph_.apply(move);
  return true;
}

// Returns the allowed move with the best estimate, at random among equals; when all moves are
// forbidden, any of them.
Move TabuSearch::choose(Time best) {
  Move chosen;
  Time leastEstimate = 0;
  std::uint64_t equals = 0;
  for (const Move& move : moves_) {
    const Time estimate = estimator_.estimate(move);
    if (equals > 0 && estimate > leastEstimate) continue;
    if (estimate >= best && isTabu(move)) continue;
    if (equals == 0 || estimate < leastEstimate) {
      leastEstimate = estimate;
      equals = 0;
    }
    if (random_() % ++equals == 0) chosen = move;
  }
  return equals > 0 ? chosen : moves_[random_() % moves_.size()];
}

bool TabuSearch::isTabu(const Move& move) const {
  return anyReversedPair(graph_, move, [this](OperationId before, OperationId after) {
    return tabu_.isForbidden(before, after, course_.iterations());
  });
}

// Lasts up to half as long again, at random: with a fixed tenure a search may run in circles.
void TabuSearch::forbidToUndo(const Move& move) {
  const std::uint64_t end =
      course_.iterations() + 1 + settings_.tenure + random_() % (settings_.tenure / 2 + 1);
  anyReversedPair(graph_, move, [this, end](OperationId before, OperationId after) {
    tabu_.forbid(after, before, end);
    return false;
  });
}

}  // namespace jobshop
