#include "libvarrow/statistics/NumStatistics.h"

#include <boost/thread/lock_guard.hpp>
#include <map>
#include <string>

#include "base/number_text.h"
#include "base/truncated.h"
#include "libvarrow/backtrace/Check.h"

namespace libvarrow {

void NumStatistics::add(double sample) {
  LIBVARROW_CHECK(interval_ != 0);
  const std::uint64_t whole = base::truncatedToUnsigned(sample);
  const std::uint64_t bucket = whole - whole % interval_;
  const boost::lock_guard<boost::mutex> lock(mutex_);
  sum_ += sample;
  if (!min_ || *min_ > sample) min_ = sample;
  if (!max_ || sample > *max_) max_ = sample;
  ++buckets_[bucket];
  ++count_;
}

Json::Value NumStatistics::toJsonValue4Bind() const {
  const boost::lock_guard<boost::mutex> lock(mutex_);
  if (count_ == 0) return Json::Value();
  const double samples = static_cast<double>(count_);
  Json::Value json(Json::objectValue);
  const std::map<std::uint64_t, std::uint64_t> ascending(buckets_.begin(), buckets_.end());
  for (const auto& [key, count] : ascending) {
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
