// The time that a part of a module's work takes, for the timeline of the run.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "libvarrow/module/ModuleData.h"
#include "libvarrow/module/RunObserver.h"

namespace libvarrow {

/// RAII guard: tells the observer of a run the begin, the end and the thread of a part of a
/// module's work, which a host shows on its timeline:
///
///     {
///       const libvarrow::TraceSpan span(*data, "read orders");
///       readOrders(file);
///     }
///
/// Spans of a thread must be nested. Without an observer nothing is recorded. A span is for parts
/// of a millisecond or more: hosts record a limited number of them. Use it on any thread, as long
/// as no thread sets the observer.
class TraceSpan {
 public:
  /// Begins the span, with a copy of `name`.
  TraceSpan(const ModuleData& data, std::string_view name) : observer_(data.observer()) {
    if (observer_ == nullptr) return;
    name_ = name;
    begin_ = std::chrono::steady_clock::now();
  }
  TraceSpan(const TraceSpan&) = delete;
  TraceSpan& operator=(const TraceSpan&) = delete;
  /// Ends the span, also when an exception leaves it.
  ~TraceSpan() {
    if (observer_ == nullptr) return;
    observer_->spanEnds(name_, begin_, std::chrono::steady_clock::now());
  }

 private:
  RunObserver* const observer_;
  std::string name_;
  std::chrono::steady_clock::time_point begin_;
};

}  // namespace libvarrow
