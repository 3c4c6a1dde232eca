// The progress of one search of a run.
#pragma once

#include <libvarrow/statistics/ProgressStatistics.h>

#include <cstdint>
#include <string>

namespace jobshop {

/// Progress of the tries of one search, as a part of the run's progress. Rendered as
/// {"progressPercent": 66, "search": the name}. Thread-safe.
class SearchProgress : public libvarrow::ProgressStatistics {
 public:
  /// Creates the progress of `tries` tries, at least 1.
  SearchProgress(std::string name, std::uint64_t tries);

  void countTry() { tries_.inc(); }

  Json::Value toJsonValue4Bind() const override;
  std::uint64_t getProcessPercent() const override { return tries_.getProcessPercent(); }

 private:
  const std::string name_;
  libvarrow::SimpleProgressStatistics tries_;
};

}  // namespace jobshop
