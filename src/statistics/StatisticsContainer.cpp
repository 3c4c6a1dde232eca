#include "libvarrow/statistics/StatisticsContainer.h"

#include <boost/thread/lock_guard.hpp>
#include <iterator>

namespace libvarrow {

using Lock = boost::lock_guard<boost::mutex>;

StatisticsContainer::StatisticsContainer(const char* name) : name_(name) {}

StatisticsContainer::StatisticsContainer(std::string name) : name_(std::move(name)) {}

StatisticsContainer::~StatisticsContainer() {
  const Lock lock(mutex_);
  entries_.clear();
}

void StatisticsContainer::addStat(const std::string& name, CommonStatistics* stat) {
  std::unique_ptr<CommonStatistics> owned(stat);
  const Lock lock(mutex_);
  entries_.emplace_back(name, std::move(owned));
}

template <class T, class... Arguments>
T* StatisticsContainer::create(const std::string& name, Arguments&&... arguments) {
  auto* created = new T(std::forward<Arguments>(arguments)...);
  addStat(name, created);
  return created;
}

CountStatistics* StatisticsContainer::getCountStatistics(const std::string& name,
                                                         std::int64_t initial) {
  return create<CountStatistics>(name, initial);
}

PercentStatistics* StatisticsContainer::getPercentStatistics(const std::string& name,
                                                             std::uint64_t total) {
  return create<PercentStatistics>(name, total);
}

DistributionStatistics* StatisticsContainer::getDistributionStatistics(const std::string& name) {
  return create<DistributionStatistics>(name);
}

RejectionStatistics* StatisticsContainer::getRejectionStatistics(const std::string& name,
                                                                 std::size_t maxPairs) {
  return create<RejectionStatistics>(name, maxPairs);
}

JsonStatistics* StatisticsContainer::getJsonStatistics(const std::string& name,
                                                       const Json::Value* value) {
  return create<JsonStatistics>(name, value);
}

JsonStatistics* StatisticsContainer::getJsonStatistics(const std::string& name,
                                                       const Json::Value& value) {
  return create<JsonStatistics>(name, value);
}

TimeStatistics* StatisticsContainer::getTimeStatistics(std::string name) {
  if (name.empty()) name = name_ + "Time_Dur";
  return create<TimeStatistics>(name);
}

StatisticsContainer* StatisticsContainer::getStatisticsContainer(const std::string& name) {
  return create<StatisticsContainer>(name, name);
}

void StatisticsContainer::merge(StatisticsContainer* other) {
  const Lock lock(mutex_);
  if (other == this) return;
  entries_.insert(entries_.end(), std::make_move_iterator(other->entries_.begin()),
                  std::make_move_iterator(other->entries_.end()));
  other->entries_.clear();
}

void StatisticsContainer::visit(
    const std::function<void(const std::string&, const CommonStatistics&)>& visit) const {
  const Lock lock(mutex_);
  for (const auto& [name, statistic] : entries_) {
    if (statistic == nullptr) continue;
    visit(name, *statistic);
    if (const auto* child = dynamic_cast<const StatisticsContainer*>(statistic.get())) {
      child->visit(visit);
    }
  }
}

Json::Value StatisticsContainer::toJsonValue4Bind() const {
  const Lock lock(mutex_);
  Json::Value json(Json::objectValue);
  Json::Value& list = json[name_] = Json::Value(Json::arrayValue);
  for (const auto& [name, statistic] : entries_) {
    if (const auto* child = dynamic_cast<const StatisticsContainer*>(statistic.get())) {
      list.append(child->toJsonValue4Bind());
    } else {
      Json::Value entry(Json::objectValue);
      entry[name] = statistic ? statistic->toJsonValue4Bind() : Json::Value();
      list.append(std::move(entry));
    }
  }
  return json;
}

}  // namespace libvarrow
