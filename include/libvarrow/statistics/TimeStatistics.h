// Time points, and the guard with which code times itself.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/noncopyable.hpp>
#include <boost/thread/mutex.hpp>
#include <vector>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CommonStatistics.h"

namespace libvarrow {

/// Collects time points in the order appended. Locked: any thread may append while another renders.
///
/// Rendered as an object: "minutes", the whole seconds from the first time point to the last
/// divided by 60, and, unless there is none, "timestamps", their texts.
class LIBVARROW_API TimeStatistics : public CommonStatistics {
 public:
  TimeStatistics() = default;

  /// Appends `t`, whatever came before it.
  void appendTime(boost::posix_time::ptime t);
  /// Appends the local time now, to the microsecond.
  void appendCurrentLocalTime();

  /// Last time point minus first; zero when there are none.
  boost::posix_time::time_duration getDur() const;

  Json::Value toJsonValue4Bind() const override;

 private:
  boost::posix_time::time_duration getDurImp() const;

  mutable boost::mutex mutex_;
  std::vector<boost::posix_time::ptime> timestamps_;
};

/// Appends the local time at entry and at exit of its scope. Without memory for the second, logs
/// that at WARN.
///
///     TimeRecoderHelper timer(data->statisticsContainer->getTimeStatistics("search"));
class LIBVARROW_API TimeRecoderHelper : private boost::noncopyable {
 public:
  /// `statistics` is not owned and must outlive the guard.
  explicit TimeRecoderHelper(TimeStatistics* statistics);
  ~TimeRecoderHelper();

 private:
  TimeStatistics* statistics_;
};

}  // namespace libvarrow
