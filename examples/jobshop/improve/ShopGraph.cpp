#include "improve/ShopGraph.h"

#include <libvarrow/backtrace/Check.h>

#include <algorithm>
#include <utility>

namespace jobshop {

ShopGraph::ShopGraph(const Instance& instance)
    : machineCount_(instance.machineCount), vertices_(1), operations_(1) {
  const std::size_t count = instance.operationCount();
  vertices_.reserve(count + 1);
  operations_.reserve(count + 1);
  for (std::size_t job = 0; job < instance.jobs.size(); ++job) addJob(job, instance.jobs[job]);
  places_.resize(count + 1);
  isMarked_.resize(count + 1);
}

void ShopGraph::addJob(std::size_t job, const std::vector<Operation>& operations) {
  const auto first = static_cast<OperationId>(vertices_.size());
  firstOfJobs_.push_back(first);
  for (std::size_t position = 0; position < operations.size(); ++position) {
    const auto id = static_cast<OperationId>(first + position);
    Vertex vertex;
    vertex.jobBefore = position == 0 ? 0 : id - 1;
    vertex.jobAfter = position + 1 == operations.size() ? 0 : id + 1;
    vertex.duration = operations[position].duration;
    vertices_.push_back(vertex);
    operations_.push_back({job, position, operations[position].machine, 0, 0});
  }
  if (!operations.empty()) lastOfJobs_.push_back(static_cast<OperationId>(vertices_.size() - 1));
}

void ShopGraph::setOrder(OperationOrder order) {
  LIBVARROW_CHECK(order.size() == vertices_.size() - 1);
  order_ = std::move(order);
  for (std::size_t place = 0; place < order_.size(); ++place) places_[order_[place]] = place;
  linkMachines();
  if (order_.empty()) return;
  updateHeads(0);
  updateTails(order_.size() - 1);
}

void ShopGraph::setSchedule(std::vector<ScheduledOperation> operations) {
  std::sort(operations.begin(), operations.end(), earlierInTime);
  OperationOrder order;
  order.reserve(operations.size());
  for (const ScheduledOperation& operation : operations) {
    order.push_back(firstOfJobs_[operation.job] + static_cast<OperationId>(operation.position));
  }
  setOrder(std::move(order));
}

void ShopGraph::linkMachines() {
  std::vector<OperationId> lastOf(machineCount_);
  for (const OperationId operation : order_) {
    OperationId& last = lastOf[operations_[operation].machine];
    linkBetween(last, operation, 0);
    last = operation;
  }
}

void ShopGraph::linkBetween(OperationId before, OperationId operation, OperationId after) {
  vertices_[before].machineAfter = operation;
  vertices_[operation].machineBefore = before;
  vertices_[operation].machineAfter = after;
  vertices_[after].machineBefore = operation;
}

void ShopGraph::unlink(OperationId operation) {
  const Vertex& vertex = vertices_[operation];
  vertices_[vertex.machineBefore].machineAfter = vertex.machineAfter;
  vertices_[vertex.machineAfter].machineBefore = vertex.machineBefore;
}

void ShopGraph::apply(const Move& move) {
  const auto [moved, target, isForward] = move;
  std::size_t from = places_[moved];
  std::size_t to = places_[target];
  unlink(moved);
  if (isForward) {
    linkBetween(target, moved, vertices_[target].machineAfter);
    reorderForward(from, to);
  } else {
    std::swap(from, to);
    linkBetween(vertices_[target].machineBefore, moved, target);
    reorderBackward(from, to);
  }
  updateHeads(from);
  updateTails(to);
}

// The operation at `from` now follows the one at `to`: it moves behind it in the order, together
// with all operations in between that follow it.
void ShopGraph::reorderForward(std::size_t from, std::size_t to) {
  const OperationId target = order_[to];
  isMarked_[order_[from]] = true;
  for (std::size_t place = from + 1; place <= to; ++place) {
    const Vertex& vertex = vertices_[order_[place]];
    isMarked_[order_[place]] = isMarked_[vertex.jobBefore] || isMarked_[vertex.machineBefore];
  }
  LIBVARROW_CHECK(!isMarked_[target]);
  gather(from, to, false);
}

void ShopGraph::reorderBackward(std::size_t from, std::size_t to) {
  const OperationId target = order_[from];
  isMarked_[order_[to]] = true;
  for (std::size_t place = to; place-- > from;) {
    const Vertex& vertex = vertices_[order_[place]];
    isMarked_[order_[place]] = isMarked_[vertex.jobAfter] || isMarked_[vertex.machineAfter];
  }
  LIBVARROW_CHECK(!isMarked_[target]);
  gather(from, to, true);
}

// Puts the marked operations of a part of the order before or behind its others, and removes the
// marks.
void ShopGraph::gather(std::size_t from, std::size_t to, bool markedFirst) {
  setAside_.clear();
  std::size_t next = from;
  for (std::size_t place = from; place <= to; ++place) {
    const OperationId operation = order_[place];
    if (isMarked_[operation] == markedFirst) {
      order_[next++] = operation;
    } else {
      setAside_.push_back(operation);
    }
  }
  std::copy(setAside_.begin(), setAside_.end(), order_.begin() + static_cast<std::ptrdiff_t>(next));
  for (std::size_t place = from; place <= to; ++place) {
    places_[order_[place]] = place;
    isMarked_[order_[place]] = false;
  }
}

void ShopGraph::updateHeads(std::size_t from) {
  for (std::size_t place = from; place < order_.size(); ++place) {
    Vertex& vertex = vertices_[order_[place]];
    vertex.head = std::max(endOf(vertex.jobBefore), endOf(vertex.machineBefore));
  }
  makespan_ = 0;
  for (const OperationId last : lastOfJobs_) makespan_ = std::max(makespan_, endOf(last));
}

void ShopGraph::updateTails(std::size_t to) {
  for (std::size_t place = to + 1; place-- > 0;) {
    Vertex& vertex = vertices_[order_[place]];
    vertex.tail = vertex.duration +
                  std::max(vertices_[vertex.jobAfter].tail, vertices_[vertex.machineAfter].tail);
  }
}

std::vector<ScheduledOperation> ShopGraph::schedule() const {
  std::vector<ScheduledOperation> operations(operations_.begin() + 1, operations_.end());
  for (std::size_t i = 0; i < operations.size(); ++i) {
    operations[i].start = vertices_[i + 1].head;
    operations[i].end = operations[i].start + vertices_[i + 1].duration;
  }
  return operations;
}

}  // namespace jobshop
