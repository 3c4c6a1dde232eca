// The efficiency of a machine: the work it does in a time unit.
#pragma once

#include <string>

#include "problem/Instance.h"

namespace jobshop {

/// Efficiency, rounded to six decimals, so that results do not depend on binary fractions: at 0.57
/// a work of 57 takes 100, not 101.
class Efficiency {
 public:
  static constexpr double kMin = 0.001;
  static constexpr double kMax = 1000;

  Efficiency() = default;
  /// Sets the efficiency. Aborts when `workInTimeUnit` is not from kMin to kMax.
  explicit Efficiency(double workInTimeUnit);

  /// Returns the working time that `work` takes, rounded up to whole units.
  Time timeFor(Time work) const;

  bool isOne() const { return millionths_ == kMillion; }
  /// Returns the efficiency as text, "0.8".
  std::string text() const;

 private:
  static constexpr Time kMillion = 1'000'000;

  Time millionths_ = kMillion;
};

}  // namespace jobshop
