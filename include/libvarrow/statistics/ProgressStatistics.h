// The progress of a long computation.
#pragma once

#include <boost/shared_ptr.hpp>
#include <boost/thread/mutex.hpp>
#include <cstdint>
#include <vector>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CommonStatistics.h"
#include "libvarrow/statistics/PercentStatistics.h"

namespace libvarrow {

/// A percentage of work done. Rendered as {"progressPercent": 66}.
class LIBVARROW_API ProgressStatistics : public CommonStatistics {
 public:
  Json::Value toJsonValue4Bind() const override;

  /// Returns the whole percent, rounded down. Thread-safe.
  virtual std::uint64_t getProcessPercent() const = 0;
};

/// A count of steps done out of a known number; inc() is thread-safe. Rendered as PercentStatistics
/// is: two of three as "2/3;66.6667%".
///
/// It does not derive from ProgressStatistics, so it cannot be a child of a composed progress. A
/// host's own child may hold one:
///
///     struct Search : libvarrow::ProgressStatistics {
///       std::uint64_t getProcessPercent() const override { return steps.getProcessPercent(); }
///       libvarrow::SimpleProgressStatistics steps{1000};
///     };
class LIBVARROW_API SimpleProgressStatistics : public PercentStatistics {
 public:
  /// Sets the number of steps, `total`.
  explicit SimpleProgressStatistics(std::uint64_t total) : PercentStatistics(total) {}
  ~SimpleProgressStatistics() override;

  /// Returns the number of steps.
  using PercentStatistics::total;
  /// Returns the whole percent, rounded down; more than 100 when more than `total` steps were
  /// counted. Aborts when `total` is 0.
  std::uint64_t getProcessPercent() const;
};

/// The share of children that are finished. The progress of other children does not count: children
/// at 100, 100 and 99 give 66.
///
/// Rendered as {"progressPercent": 66, "childdreProgress": [each child's rendering]}. Children that
/// progress meanwhile may be further than the percentage says. Thread-safe.
class LIBVARROW_API ComposedProgressStatistics : public ProgressStatistics {
 public:
  /// Shares `children`: at least one, none null. Both are checked at their first use.
  explicit ComposedProgressStatistics(std::vector<boost::shared_ptr<ProgressStatistics>> children);

  Json::Value toJsonValue4Bind() const override;
  std::uint64_t getProcessPercent() const override;

 private:
  mutable boost::mutex mutex_;
  const std::vector<boost::shared_ptr<ProgressStatistics>> children_;
};

}  // namespace libvarrow
