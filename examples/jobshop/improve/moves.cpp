#include "improve/moves.h"

#include <algorithm>
#include <cstddef>

namespace jobshop {

namespace {

using Path = std::vector<OperationId>;

// The largest distance of a move: the time to estimate all moves of a block grows with the square
// of the distance.
constexpr std::size_t kReach = 100;

/// Collects the moves of all blocks of a path.
class BlockMoves {
 public:
  BlockMoves(const ShopGraph& graph, const Path& path) : graph_(graph), path_(path) {
    for (std::size_t begin = 0; begin < path.size();) {
      std::size_t end = begin + 1;
      while (end < path.size() && graph[path[end]].machineBefore == path[end - 1]) ++end;
      addBlock(begin, end);
      begin = end;
    }
  }

  std::vector<Move> moves;

 private:
  // Moves to the begin of the first block or to the end of the last one cannot help: the path
  // before or after the block is empty, so the block itself stays as long.
  void addBlock(std::size_t begin, std::size_t end) {
    const std::size_t last = end - 1;
    if (begin == last) return;
    const bool isFirst = begin == 0;
    const bool isLast = end == path_.size();
    if (!isLast) addMovesOfEnd(begin, last);
    // A swap of two neighbours is one move in both directions.
    if (!isFirst && (isLast || last - begin > 1)) addMovesOfBegin(begin, last);
  }

  void addMovesOfEnd(std::size_t begin, std::size_t last) {
    const std::size_t farthest = last - std::min(last - begin, kReach);
    for (std::size_t i = farthest; i < last; ++i) addForward(i, last);
    for (std::size_t i = std::max(farthest, begin + 1); i + 1 < last; ++i) addBackward(last, i);
  }

  void addMovesOfBegin(std::size_t begin, std::size_t last) {
    const std::size_t farthest = begin + std::min(last - begin, kReach);
    for (std::size_t i = begin + 1; i <= farthest; ++i) addBackward(i, begin);
    for (std::size_t i = begin + 2; i <= farthest && i < last; ++i) addForward(begin, i);
  }

  // A move closes a cycle if a path leads from the job's next operation to the target. Such a path
  // would make the tail of that operation at least its duration longer than the target's.
  void addForward(std::size_t moved, std::size_t target) {
    const OperationId after = graph_[path_[moved]].jobAfter;
    const Time tailOfSuchPath = graph_[path_[target]].tail + graph_[after].duration;
    if (after == path_[target] || (after != 0 && graph_[after].tail >= tailOfSuchPath)) return;
    moves.push_back({path_[moved], path_[target], true});
  }

  // The same in the other direction, by heads.
  void addBackward(std::size_t moved, std::size_t target) {
    const OperationId before = graph_[path_[moved]].jobBefore;
    const Time headOfSuchPath = graph_.endOf(path_[target]);
    if (before == path_[target] || (before != 0 && graph_[before].head >= headOfSuchPath)) return;
    moves.push_back({path_[moved], path_[target], false});
  }

  const ShopGraph& graph_;
  const Path& path_;
};

OperationId criticalEnd(const ShopGraph& graph, std::mt19937_64& random) {
  std::uint64_t ends = 0;
  OperationId end = 0;
  for (const OperationId last : graph.lastOfJobs()) {
    if (graph.endOf(last) == graph.makespan() && random() % ++ends == 0) end = last;
  }
  return end;
}

OperationId criticalBefore(const ShopGraph& graph, OperationId operation, std::mt19937_64& random) {
  const Vertex& vertex = graph[operation];
  const bool followsJob = graph.endOf(vertex.jobBefore) == vertex.head;
  const bool followsMachine = graph.endOf(vertex.machineBefore) == vertex.head;
  const bool isJob = followsJob && (!followsMachine || random() % 2 == 0);
  return isJob ? vertex.jobBefore : vertex.machineBefore;
}

}  // namespace

std::vector<OperationId> criticalPath(const ShopGraph& graph, std::mt19937_64& random) {
  OperationId operation = criticalEnd(graph, random);
  Path path = {operation};
  while (graph[operation].head > 0) {
    operation = criticalBefore(graph, operation, random);
    path.push_back(operation);
  }
  std::reverse(path.begin(), path.end());
  return path;
}

std::vector<Move> blockMoves(const ShopGraph& graph, const Path& path) {
  return BlockMoves(graph, path).moves;
}

Time MoveEstimator::estimate(const Move& move) {
  const OperationId first = move.isForward ? move.moved : move.target;
  const OperationId last = move.isForward ? move.target : move.moved;
  sequence_.clear();
  if (!move.isForward) sequence_.push_back(move.moved);
  for (OperationId operation = first;; operation = graph_[operation].machineAfter) {
    if (operation != move.moved) sequence_.push_back(operation);
    if (operation == last) break;
  }
  if (move.isForward) sequence_.push_back(move.moved);
  return longestPath(graph_.endOf(graph_[first].machineBefore),
                     graph_[graph_[last].machineAfter].tail);
}

// Returns the longest path through the sequence when the machine is free from `free` on and needs
// `tail` after it.
Time MoveEstimator::longestPath(Time free, Time tail) {
  heads_.resize(sequence_.size());
  for (std::size_t i = 0; i < sequence_.size(); ++i) {
    const Vertex& vertex = graph_[sequence_[i]];
    heads_[i] = std::max(graph_.endOf(vertex.jobBefore), free);
    free = heads_[i] + vertex.duration;
  }
  Time longest = 0;
  for (std::size_t i = sequence_.size(); i-- > 0;) {
    const Vertex& vertex = graph_[sequence_[i]];
    tail = vertex.duration + std::max(graph_[vertex.jobAfter].tail, tail);
    longest = std::max(longest, heads_[i] + tail);
  }
  return longest;
}

}  // namespace jobshop
