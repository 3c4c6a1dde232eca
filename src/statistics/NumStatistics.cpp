#include "libvarrow/statistics/NumStatistics.h"

#include <algorithm>
#include <boost/thread/lock_guard.hpp>
#include <map>
#include <string>

#include "base/number_text.h"
#include "base/truncated.h"
#include "libvarrow/backtrace/Check.h"

namespace libvarrow {

namespace {

// Buckets with lower numbers are counted in a vector, which is faster than the hash map of the
// others. It takes at most 8 KB.
constexpr std::uint64_t kLowBuckets = 1024;

}  // namespace

void NumStatistics::add(double sample) {
  LIBVARROW_CHECK(interval_ != 0);
  const std::uint64_t whole = base::truncatedToUnsigned(sample);
  // Skips the division in the usual case.
  const std::uint64_t bucket = interval_ == 1 ? whole : whole / interval_;
  const boost::lock_guard<boost::mutex> lock(mutex_);
  // First, because only this may run out of memory.
  if (bucket < lowBuckets_.size()) {
    ++lowBuckets_[bucket];
  } else {
    countOutside(bucket);
  }
  sum_ += sample;
  if (!min_ || *min_ > sample) min_ = sample;
  if (!max_ || sample > *max_) max_ = sample;
  ++count_;
}

// Adds 1 to a bucket that the vector does not have yet, or never has.
void NumStatistics::countOutside(std::uint64_t bucket) {
  if (bucket >= kLowBuckets) {
    ++highBuckets_[bucket];
    return;
  }
  lowBuckets_.resize(std::min(std::max(bucket + 1, 2 * lowBuckets_.size()), kLowBuckets));
  ++lowBuckets_[bucket];
}

Json::Value NumStatistics::toJsonValue4Bind() const {
  const boost::lock_guard<boost::mutex> lock(mutex_);
  if (count_ == 0) return Json::Value();
  const double samples = static_cast<double>(count_);
  Json::Value json(Json::objectValue);
  std::map<std::uint64_t, std::uint64_t> ascending(highBuckets_.begin(), highBuckets_.end());
  for (std::size_t bucket = 0; bucket != lowBuckets_.size(); ++bucket) {
    if (lowBuckets_[bucket] != 0) ascending.emplace(bucket, lowBuckets_[bucket]);
  }
  for (const auto& [bucket, count] : ascending) {
    const std::uint64_t key = bucket * interval_;
    // The key is already a multiple of the interval; the printed bounds are multiplied once more,
    // because all readers of these files expect that.
    const std::string bounds =
        "[" + std::to_string(interval_ * key) + "-" + std::to_string((key + 1) * interval_) + ")";
    json[bounds] = std::to_string(count) + ",   " +
                   base::number_text::twoDecimals(static_cast<double>(count) * 100.0 / samples) +
                   "%";
  }
  json["min"] = min_.get();
  json["max"] = max_.get();
  json["sum"] = sum_;
  json["count"] = static_cast<Json::UInt64>(count_);
  json["sum/count"] = sum_ / samples;
  return json;
}

}  // namespace libvarrow
