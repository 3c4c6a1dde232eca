// The disjunctive graph of a job shop in which every machine has an order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "problem/Instance.h"
#include "schedule/Schedule.h"

namespace jobshop {

/// Operations of an instance, numbered from 1 through the jobs in turn; 0 means none.
using OperationId = std::uint32_t;

/// Every operation once, in an order that keeps those of the jobs. The operations of each machine
/// run in it, too.
using OperationOrder = std::vector<OperationId>;

/// An operation with its neighbours, each 0 when missing.
struct Vertex {
  OperationId jobBefore = 0;
  OperationId jobAfter = 0;
  OperationId machineBefore = 0;
  OperationId machineAfter = 0;
  Time duration = 0;
  Time head = 0;  ///< the earliest start: the longest path to the operation
  Time tail = 0;  ///< the longest path from the operation's start to the end
};

/// Moves an operation on its machine: directly after a later one, or directly before an earlier
/// one.
struct Move {
  OperationId moved = 0;
  OperationId target = 0;
  bool isForward = true;  ///< true: after the target
};

/// Graph of operations with an order on each machine. Keeps the longest paths up to date. Not
/// thread-safe.
class ShopGraph {
 public:
  /// Creates the graph of `instance`, whose operations must fit OperationId, without an order.
  explicit ShopGraph(const Instance& instance);

  /// Orders all machines.
  void setOrder(OperationOrder order);
  /// Orders all machines as in a feasible schedule.
  void setSchedule(std::vector<ScheduledOperation> operations);
  /// Returns the current order: a topological order of the graph.
  const OperationOrder& order() const { return order_; }

  /// Applies `move`. Aborts when it would create a cycle.
  void apply(const Move& move);

  const Vertex& operator[](OperationId operation) const { return vertices_[operation]; }
  /// Returns the earliest end of `operation`; 0 for no operation.
  Time endOf(OperationId operation) const {
    return vertices_[operation].head + vertices_[operation].duration;
  }
  Time makespan() const { return makespan_; }
  std::size_t jobOf(OperationId operation) const { return operations_[operation].job; }
  /// Returns the first operation of each job; for a job without any, that of the next one.
  const std::vector<OperationId>& firstOfJobs() const { return firstOfJobs_; }
  /// Returns the last operation of each job that has any.
  const std::vector<OperationId>& lastOfJobs() const { return lastOfJobs_; }

  /// Returns every operation at its earliest start.
  std::vector<ScheduledOperation> schedule() const;

 private:
  void addJob(std::size_t job, const std::vector<Operation>& operations);
  void linkMachines();
  void unlink(OperationId operation);
  void linkBetween(OperationId before, OperationId operation, OperationId after);
  void reorderForward(std::size_t from, std::size_t to);
  void reorderBackward(std::size_t from, std::size_t to);
  void gather(std::size_t from, std::size_t to, bool markedFirst);
  void updateHeads(std::size_t from);
  void updateTails(std::size_t to);

  std::size_t machineCount_;
  std::vector<Vertex> vertices_;                // the first, for the number 0, has the times 0
  std::vector<ScheduledOperation> operations_;  // without times; the first is not used
  std::vector<OperationId> firstOfJobs_;
  std::vector<OperationId> lastOfJobs_;
  OperationOrder order_;
  std::vector<std::size_t> places_;  // of operations in order_
  Time makespan_ = 0;
  std::vector<bool> isMarked_;  // all false between calls
  std::vector<OperationId> setAside_;
};

}  // namespace jobshop
