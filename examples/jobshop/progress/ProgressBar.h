// A bar that grows on the terminal while a search lasts.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "Instance.h"

namespace jobshop {

/// Draws on standard error, over itself, at most ten times a second and not at all in the first
/// tenth. Nothing of it is left when it is destroyed.
class ProgressBar {
 public:
  /// `columns`: of the terminal; 0 when there is none, which draws nothing.
  ProgressBar(std::string label, std::uint64_t total, std::size_t columns);
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// Costs a look at the clock when it is too soon to draw.
  void update(std::uint64_t done, Time bestMakespan);

 private:
  using Clock = std::chrono::steady_clock;

  std::string lineFor(std::uint64_t done, Time bestMakespan) const;

  const std::string label_;
  const std::uint64_t total_;
  const std::size_t columns_;
  Clock::time_point last_ = Clock::now();
  std::size_t drawn_ = 0;  // length of what stands on the terminal
};

}  // namespace jobshop
