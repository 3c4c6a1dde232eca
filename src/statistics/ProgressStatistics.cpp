#include "libvarrow/statistics/ProgressStatistics.h"

#include <boost/thread/lock_guard.hpp>
#include <utility>

#include "libvarrow/backtrace/Check.h"

namespace libvarrow {

namespace {

constexpr std::uint64_t kDone = 100;

}  // namespace

Json::Value ProgressStatistics::toJsonValue4Bind() const {
  Json::Value json(Json::objectValue);
  json["progressPercent"] = static_cast<Json::UInt64>(getProcessPercent());
  return json;
}

// Defined here, so that the class belongs to this library even for objects created elsewhere.
SimpleProgressStatistics::~SimpleProgressStatistics() = default;

std::uint64_t SimpleProgressStatistics::getProcessPercent() const {
  LIBVARROW_CHECK(total() != 0);
  return static_cast<std::uint64_t>(count()) * 100 / total();
}

ComposedProgressStatistics::ComposedProgressStatistics(
    std::vector<boost::shared_ptr<ProgressStatistics>> children)
    : children_(std::move(children)) {}

Json::Value ComposedProgressStatistics::toJsonValue4Bind() const {
  Json::Value json = ProgressStatistics::toJsonValue4Bind();
  const boost::lock_guard<boost::mutex> lock(mutex_);
  for (const auto& child : children_) {
    json["childdreProgress"].append(child->toJsonValue4Bind());
  }
  return json;
}

std::uint64_t ComposedProgressStatistics::getProcessPercent() const {
  const boost::lock_guard<boost::mutex> lock(mutex_);
  LIBVARROW_CHECK(!children_.empty());
  std::uint64_t finished = 0;
  for (const auto& child : children_) {
    // An almost finished child counts no more than one that has not begun.
    if (child->getProcessPercent() >= kDone) ++finished;
  }
  return finished * 100 / children_.size();
}

}  // namespace libvarrow
