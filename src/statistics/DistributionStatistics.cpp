#include "libvarrow/statistics/DistributionStatistics.h"

#include <boost/thread/lock_guard.hpp>

#include "base/number_text.h"
#include "base/text_hash.h"
#include "libvarrow/backtrace/Check.h"

namespace libvarrow {

using Lock = boost::lock_guard<boost::mutex>;

inline std::size_t DistributionStatistics::KeyHash::operator()(const std::string& key) const {
  return static_cast<std::size_t>(base::textHash(key));
}

// Most chains of a nearly empty table have one key, and each further one costs a division.
DistributionStatistics::DistributionStatistics() {
  counts_.max_load_factor(0.125F);
}

void DistributionStatistics::inc(const std::string& key, std::uint64_t n) {
  const Lock lock(mutex_);
  incInternal(key, n);
}

void DistributionStatistics::merge(DistributionStatistics* other) {
  LIBVARROW_CHECK(other != this);  // else it would wait for its own lock
  const Lock lock(mutex_);
  for (const auto& [key, count] : other->get()) incInternal(key, count);
}

std::map<std::string, std::uint64_t> DistributionStatistics::get() const {
  const Lock lock(mutex_);
  return {counts_.begin(), counts_.end()};
}

std::uint64_t DistributionStatistics::getCountSum() const {
  const Lock lock(mutex_);
  return countSumInternal();
}

Json::Value DistributionStatistics::toJsonValue4Bind() const {
  const Lock lock(mutex_);
  if (counts_.empty()) return Json::Value();
  const std::uint64_t sum = countSumInternal();
  Json::Value json(Json::objectValue);
  for (const auto& [key, count] : counts_) {
    const double number = static_cast<double>(count);
    json[key] = "count=" + base::number_text::general(number) + ", proportion=" +
                base::number_text::general(number * 100 / static_cast<double>(sum)) + "%";
  }
  json["__sum__"] = static_cast<Json::Int64>(sum);
  json["__key_count__"] = static_cast<Json::Int64>(counts_.size());
  return json;
}

void DistributionStatistics::incInternal(const std::string& key, std::uint64_t n) {
  counts_[key] += n;
}

std::uint64_t DistributionStatistics::countSumInternal() const {
  std::uint64_t sum = 0;
  for (const auto& [key, count] : counts_) sum += count;
  return sum;
}

}  // namespace libvarrow
