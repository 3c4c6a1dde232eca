// Time points, and a guard that records them.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/noncopyable.hpp>
#include <boost/thread/mutex.hpp>
#include <vector>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CommonStatistics.h"

namespace libvarrow {

/// Time points in the order in which they were appended. Thread-safe: threads may append while
/// another renders.
///
/// Rendered as an object: "minutes", the whole seconds from the first time point to the last
/// divided by 60, and, if there are any, "timestamps", their texts.
class LIBVARROW_API TimeStatistics : public CommonStatistics {
 public:
  TimeStatistics() = default;

  /// Appends `t`, which may be earlier than the time points before it.
  void appendTime(boost::posix_time::ptime t);
  /// Appends the current local time, with microseconds.
  void appendCurrentLocalTime();

  /// Returns the last time point minus the first; zero without time points.
  boost::posix_time::time_duration getDur() const;

  Json::Value toJsonValue4Bind() const override;

 private:
  boost::posix_time::time_duration getDurImp() const;

  mutable boost::mutex mutex_;
  std::vector<boost::posix_time::ptime> timestamps_;
};

/// RAII guard: appends the local time at entry and at exit of its scope. Logs at WARN when it
/// runs out of memory at exit.
///
///     TimeRecoderHelper timer(data->statisticsContainer->getTimeStatistics("search"));
class LIBVARROW_API TimeRecoderHelper : private boost::noncopyable {
 public:
  /// Appends the first time. `statistics` is not owned and must outlive the guard.
  explicit TimeRecoderHelper(TimeStatistics* statistics);
  ~TimeRecoderHelper();

 private:
  TimeStatistics* statistics_;
};

}  // namespace libvarrow
