// Tells a run's observer of one step.
#pragma once

#include "libvarrow/module/ModuleData.h"
#include "libvarrow/module/RunObserver.h"

namespace libvarrow {

/// RAII guard: tells the observer that the step begins and, unless end() was called, that it fails.
/// A handler would cut the throwing function from back-traces.
class ObservedStep {
 public:
  ObservedStep(Module& step, ModuleData& data)
      : step_(step), data_(data), observer_(data.observer()) {
    if (observer_ == nullptr) return;
    level_ = observer_->dumpLevel();
    observer_->stepBegins(step, data);
  }
  ~ObservedStep() {
    if (observer_ != nullptr && !hasEnded_) observer_->stepFails(step_, data_);
  }
  ObservedStep(const ObservedStep&) = delete;
  ObservedStep& operator=(const ObservedStep&) = delete;

  DumpLevel dumpLevel() const { return level_; }

  void end() {
    if (observer_ == nullptr) return;
    hasEnded_ = true;
    observer_->stepEnds(step_, data_);
  }

 private:
  Module& step_;
  ModuleData& data_;
  RunObserver* const observer_;
  DumpLevel level_ = DumpLevel::All;
  bool hasEnded_ = false;
};

}  // namespace libvarrow
