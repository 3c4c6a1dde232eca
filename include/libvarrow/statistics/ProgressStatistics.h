// How far a long computation has come.
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

  /// Whole percent, rounded down. Thread safe.
  virtual std::uint64_t getProcessPercent() const = 0;
};

/// Steps done out of a known number, counted with inc() from any thread. Rendered as
/// PercentStatistics is: two of three as "2/3;66.6667%".
///
/// It is no ProgressStatistics, so no child of a composed progress. A host's own child may hold
/// one:
///
///     struct Search : libvarrow::ProgressStatistics {
///       std::uint64_t getProcessPercent() const override { return steps.getProcessPercent(); }
///       libvarrow::SimpleProgressStatistics steps{1000};
///     };
class LIBVARROW_API SimpleProgressStatistics : public PercentStatistics {
 public:
  /// `total`: how many steps there are.
  explicit SimpleProgressStatistics(std::uint64_t total) : PercentStatistics(total) {}
  ~SimpleProgressStatistics() override;

  /// Whole percent, rounded down; above 100 when more steps were counted than there are. Checks
  /// that there are any.
  std::uint64_t getProcessPercent() const;
};

/// The share of children that are finished; what others have done so far counts for nothing:
/// children at 100, 100 and 99 give 66.
///
/// Rendered as {"progressPercent": 66, "childdreProgress": [each child's rendering]}. Children that
/// go on meanwhile may be further than the percentage says. Thread safe.
class LIBVARROW_API ComposedProgressStatistics : public ProgressStatistics {
 public:
  /// Shares `children`, at least one and none null; that is checked at their first use.
  explicit ComposedProgressStatistics(std::vector<boost::shared_ptr<ProgressStatistics>> children);

  Json::Value toJsonValue4Bind() const override;
  std::uint64_t getProcessPercent() const override;

 private:
  mutable boost::mutex mutex_;
  const std::vector<boost::shared_ptr<ProgressStatistics>> children_;
};

}  // namespace libvarrow
