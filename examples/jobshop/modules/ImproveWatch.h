// The end, the progress and the record of a search in a pipeline.
#pragma once

#include <libvarrow/statistics/ProgressStatistics.h>

#include <chrono>
#include <cstdint>
#include <optional>

#include "JobShopData.h"
#include "improve/SearchCourse.h"
#include "modules/ImprovementRecord.h"

namespace jobshop {

/// Ends of a search: the first one counts.
struct SearchLimits {
  std::optional<std::uint64_t> iterations;
  std::optional<std::chrono::steady_clock::duration> time;
};

/// Watch of a search that a module runs: ends it at a limit or when the run must end, and records
/// it in the statistics of the run.
class ImproveWatch : public SearchWatch {
 public:
  /// The number of steps in which progress is counted.
  static constexpr std::uint64_t kSteps = 100;

  /// Starts the time. `shop` must outlive the watch.
  ImproveWatch(const JobShopData& shop, SearchLimits limits);

  bool isOver(std::uint64_t iterations) override;
  void improved(std::uint64_t iterations, Time makespan) override;

  /// Records the end of the search, which may be before the limits.
  void finish();

  std::uint64_t iterations() const { return iterations_; }
  std::uint64_t lastImprovement() const { return lastImprovement_; }

 private:
  using Clock = std::chrono::steady_clock;

  void record(std::uint64_t iterations, Time makespan);
  double partDone() const;
  void countTo(double part);

  const JobShopData& shop_;
  const SearchLimits limits_;
  const Clock::time_point start_ = Clock::now();
  // Owned by the statistics of the run.
  libvarrow::SimpleProgressStatistics* const percent_;
  ImprovementRecord* const improvements_;
  std::uint64_t counted_ = 0;
  std::uint64_t iterations_ = 0;
  std::uint64_t lastImprovement_ = 0;
};

}  // namespace jobshop
