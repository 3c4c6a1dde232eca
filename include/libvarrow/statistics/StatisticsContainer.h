// A named, ordered list of statistics.
#pragma once

#include <boost/thread/mutex.hpp>
#include <cstdint>
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
#include "libvarrow/statistics/TimeStatistics.h"

namespace libvarrow {

/// Owns statistics under names and renders them together. Containers nest, which gives the tree
/// that a pipeline fills.
///
/// Every get... operation CREATES a new statistic and appends it: names are not unique and nothing
/// is looked up. Keep the pointer to go on counting; it is valid until the container is destroyed
/// and must not be deleted.
///
/// Rendered as {name: [{entry name: rendering}, ...]}, a child container as {its own name: [...]}.
///
/// Locked: threads may add statistics while another renders. Rendering locks parent before child.
///
///     StatisticsContainer stats("run");
///     CountStatistics* rows = stats.getCountStatistics("rows");
///     rows->inc();
class LIBVARROW_API StatisticsContainer : public CommonStatistics {
 public:
  ///@{
  /// `name`: the key it is rendered under.
  explicit StatisticsContainer(const char* name);
  explicit StatisticsContainer(std::string name);
  ///@}
  /// Destroys every statistic in it.
  ~StatisticsContainer() override;

  /// The key it is rendered under.
  const std::string& name() const { return name_; }

  /// Appends `stat` and takes ownership, also when it throws. Do not add one statistic twice. A
  /// null pointer is taken and rendered as null.
  void addStat(const std::string& name, CommonStatistics* stat);

  ///@{
  /// Appends a new statistic, made from what follows its name.
  CountStatistics* getCountStatistics(const std::string& name, std::int64_t initial = 0);
  PercentStatistics* getPercentStatistics(const std::string& name, std::uint64_t total);
  DistributionStatistics* getDistributionStatistics(const std::string& name);
  JsonStatistics* getJsonStatistics(const std::string& name, const Json::Value* value = nullptr);
  JsonStatistics* getJsonStatistics(const std::string& name, const Json::Value& value);
  ///@}
  /// An empty `name` becomes this container's name followed by "Time_Dur".
  TimeStatistics* getTimeStatistics(std::string name);
  /// Appends a new child container, rendered under its own name.
  StatisticsContainer* getStatisticsContainer(const std::string& name);

  /// Moves all entries of `other` (not null) behind this container's own. Only this container is
  /// locked: nobody may use `other` meanwhile. Pointers to them live as long as this container
  /// now.
  void merge(StatisticsContainer* other);

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
