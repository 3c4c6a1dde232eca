#include "libvarrow/statistics/TimeStatistics.h"

#include <boost/thread/lock_guard.hpp>
#include <new>

#include "libvarrow/time/time_range.h"
#include "log/standard_error.h"

namespace libvarrow {

using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using Lock = boost::lock_guard<boost::mutex>;

void TimeStatistics::appendTime(ptime t) {
  const Lock lock(mutex_);
  timestamps_.push_back(t);
}

void TimeStatistics::appendCurrentLocalTime() {
  appendTime(boost::posix_time::microsec_clock::local_time());
}

time_duration TimeStatistics::getDur() const {
  const Lock lock(mutex_);
  return getDurImp();
}

time_duration TimeStatistics::getDurImp() const {
  if (timestamps_.empty()) return time_duration();
  return timestamps_.back() - timestamps_.front();
}

Json::Value TimeStatistics::toJsonValue4Bind() const {
  const Lock lock(mutex_);
  const auto wholeSeconds = getDurImp().ticks() / time_duration::ticks_per_second();
  Json::Value json(Json::objectValue);
  json["minutes"] = static_cast<double>(wholeSeconds) / 60.0;
  if (timestamps_.empty()) return json;
  Json::Value& texts = json["timestamps"];
  for (const ptime& timestamp : timestamps_) texts.append(time2str(timestamp));
  return json;
}

TimeRecoderHelper::TimeRecoderHelper(TimeStatistics* statistics) : statistics_(statistics) {
  statistics_->appendCurrentLocalTime();
}

TimeRecoderHelper::~TimeRecoderHelper() {
  try {
    statistics_->appendCurrentLocalTime();
  } catch (const std::bad_alloc&) {
    // A lost record must not end the timed work.
    logging::warnOfMemory("a time at the end of a scope", "is not recorded");
  }
}

}  // namespace libvarrow
