// The course of a search: its moves so far, its best makespan, its end.
#pragma once

#include <cstdint>

#include "problem/Instance.h"

namespace jobshop {

/// Hears of a search and ends it.
class SearchWatch {
 public:
  SearchWatch() = default;
  SearchWatch(const SearchWatch&) = delete;
  SearchWatch& operator=(const SearchWatch&) = delete;
  virtual ~SearchWatch() = default;

  /// Returns true when the search must end. Called after `iterations` of them, before the next.
  virtual bool isOver(std::uint64_t iterations) = 0;
  /// Hears that the search found a schedule shorter than all before.
  virtual void improved(std::uint64_t iterations, Time makespan) = 0;
};

/// Course of a search, shared by all its parts.
class SearchCourse {
 public:
  /// Creates the course of a search from a schedule of `makespan`. No schedule is shorter than
  /// `lowerBound`.
  SearchCourse(SearchWatch& watch, Time makespan, Time lowerBound)
      : watch_(watch), best_(makespan), lowerBound_(lowerBound) {}

  bool isOver() const { return best_ <= lowerBound_ || watch_.isOver(iterations_); }

  /// Counts an iteration that led to a schedule of `makespan`.
  void count(Time makespan) {
    ++iterations_;
    if (makespan >= best_) return;
    best_ = makespan;
    watch_.improved(iterations_, makespan);
  }

  std::uint64_t iterations() const { return iterations_; }

 private:
  SearchWatch& watch_;
  Time best_;
  const Time lowerBound_;
  std::uint64_t iterations_ = 0;
};

}  // namespace jobshop
