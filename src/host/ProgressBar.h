// The progress of a run on the terminal.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>

#include "host/RunSession.h"
#include "libvarrow/statistics/StatisticsContainer.h"

namespace libvarrow::host {

/// Progress of a run, as one line on standard error: the running step and every unfinished progress
/// statistic. A thread redraws it five times a second. Does nothing without a terminal. The
/// destructor erases the line.
class ProgressBar {
 public:
  /// `columns` is the width of the terminal; 0: none.
  ProgressBar(const StatisticsContainer& statistics, const RunSession& session,
              std::size_t columns);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar();

 private:
  void work();
  void draw();

  const StatisticsContainer& statistics_;
  const RunSession& session_;
  const std::size_t columns_;
  std::size_t drawn_ = 0;  // the width of the line on the terminal
  bool isEnded_ = false;
  std::mutex mutex_;
  std::condition_variable ended_;
  std::thread thread_;
};

/// Returns the line for `statistics`: the unfinished progress, the innermost last, and the step.
/// Empty without unfinished progress. At most `width` bytes.
std::string progressLine(const std::string& step, const StatisticsContainer& statistics,
                         std::size_t width);

}  // namespace libvarrow::host
