// A progress bar on the terminal.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "Instance.h"

namespace jobshop {

/// Progress bar on standard error. Redraws itself at most ten times a second, first after a tenth
/// of a second. The destructor erases it.
class ProgressBar {
 public:
  /// `columns` is the width of the terminal; 0, for no terminal, draws nothing.
  ProgressBar(std::string label, std::uint64_t total, std::size_t columns);
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// Redraws the bar; only reads the clock when that is too early.
  void update(std::uint64_t done, Time bestMakespan);

 private:
  using Clock = std::chrono::steady_clock;

  std::string lineText(std::uint64_t done, Time bestMakespan) const;

  const std::string label_;
  const std::uint64_t total_;
  const std::size_t columns_;
  Clock::time_point last_ = Clock::now();
  std::size_t drawn_ = 0;  // length of the line on the terminal
};

}  // namespace jobshop
