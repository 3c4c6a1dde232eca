// Numeric samples with a histogram.
#pragma once

#include <boost/optional.hpp>
#include <boost/thread/mutex.hpp>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CommonStatistics.h"

namespace libvarrow {

/// Numeric samples: count, sum, minimum, maximum, and counts by bucket of a fixed width.
/// Thread-safe: threads may add while another renders.
///
/// Rendered as null while empty, else as an object with "min", "max", "sum", "count", "sum/count"
/// and a member for each bucket: "[L-H)" : "5,   12.50%". L is the bucket's lower bound multiplied
/// by `interval`, H is L plus `interval`: for interval 10, a sample 25 is counted under
/// "[200-210)". When the first sample is not a number, it remains minimum and maximum.
class LIBVARROW_API NumStatistics : public CommonStatistics {
 public:
  /// Sets the width of a bucket. With an `interval` of 0, the first add() aborts with a back-trace.
  explicit NumStatistics(std::uint64_t interval = 1) : interval_(interval) {}

  /// Records one sample. The histogram truncates it to an integer: a negative sample or one that is
  /// not a number counts as 0, and one of 2^64 or more as 2^64 - 1.
  void add(double sample);

  Json::Value toJsonValue4Bind() const override;

 private:
  void countOutside(std::uint64_t bucket);

  mutable boost::mutex mutex_;
  // Numbers of samples by the number of the bucket, which is its lower bound / interval.
  std::vector<std::uint64_t> lowBuckets_;
  double sum_ = 0;
  std::uint64_t count_ = 0;
  boost::optional<double> min_;
  boost::optional<double> max_;
  const std::uint64_t interval_;
  std::unordered_map<std::uint64_t, std::uint64_t> highBuckets_;
};

}  // namespace libvarrow
