// A named, ordered list of statistics.
#pragma once

#include <boost/thread/mutex.hpp>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CommonStatistics.h"
#include "libvarrow/statistics/CountStatistics.h"
#include "libvarrow/statistics/DistributionStatistics.h"
#include "libvarrow/statistics/JsonStatistics.h"
#include "libvarrow/statistics/NumStatistics.h"
#include "libvarrow/statistics/PercentStatistics.h"
#include "libvarrow/statistics/RejectionStatistics.h"
#include "libvarrow/statistics/TimeStatistics.h"

namespace libvarrow {

/// A list of named statistics, which it owns and renders together. Containers nest, which gives the
/// tree that a pipeline fills.
///
/// Every get... operation CREATES a new statistic and appends it: names are not unique, and
/// existing statistics are not looked up. Keep the pointer to continue counting; it is valid until
/// the container is destroyed and must not be deleted.
///
/// Rendered as {name: [{entry name: rendering}, ...]}, a child container as {its own name: [...]}.
///
/// Thread-safe: threads may add statistics while another renders. Rendering locks the parent before
/// the child.
///
///     StatisticsContainer stats("run");
///     CountStatistics* rows = stats.getCountStatistics("rows");
///     rows->inc();
class LIBVARROW_API StatisticsContainer : public CommonStatistics {
 public:
  ///@{
  /// Creates an empty container that is rendered under the key `name`.
  explicit StatisticsContainer(const char* name);
  explicit StatisticsContainer(std::string name);
  ///@}
  /// Destroys the statistics too.
  ~StatisticsContainer() override;

  /// Returns the key under which the container is rendered.
  const std::string& name() const { return name_; }

  /// Appends `stat` and takes ownership, even when it throws. Do not add one statistic twice. A
  /// null pointer is accepted and rendered as null.
  void addStat(const std::string& name, CommonStatistics* stat);

  ///@{
  /// Appends and returns a new statistic, created from the arguments after its name.
  CountStatistics* getCountStatistics(const std::string& name, std::int64_t initial = 0);
  PercentStatistics* getPercentStatistics(const std::string& name, std::uint64_t total);
  DistributionStatistics* getDistributionStatistics(const std::string& name);
  RejectionStatistics* getRejectionStatistics(
      const std::string& name, std::size_t maxPairs = RejectionStatistics::kMaxPairs);
  JsonStatistics* getJsonStatistics(const std::string& name, const Json::Value* value = nullptr);
  JsonStatistics* getJsonStatistics(const std::string& name, const Json::Value& value);
  ///@}
  /// Appends and returns a new statistic. An empty `name` becomes this container's name followed by
  /// "Time_Dur".
  TimeStatistics* getTimeStatistics(std::string name);
  /// Appends and returns a new child container, rendered under its own name.
  StatisticsContainer* getStatisticsContainer(const std::string& name);

  /// Moves all entries of `other` (not null) to the end of this container. Pointers to them are
  /// then valid as long as this container lives. Not thread-safe for `other`: only this container
  /// is locked.
  void merge(StatisticsContainer* other);

  /// Calls `visit` with the name of every statistic in the tree and the statistic (not null), in
  /// the order of rendering; of a child container first with itself, then with its statistics. The
  /// containers on the way are locked meanwhile: `visit` must not add statistics to them.
  void visit(const std::function<void(const std::string&, const CommonStatistics&)>& visit) const;

  Json::Value toJsonValue4Bind() const override;

 private:
  using Entry = std::pair<std::string, std::unique_ptr<CommonStatistics>>;

  template <class T, class... Arguments>
  T* create(const std::string& name, Arguments&&... arguments);

  mutable boost::mutex mutex_;
  const std::string name_;
  std::vector<Entry> entries_;
};

}  // namespace libvarrow
