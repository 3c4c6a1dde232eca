#include "modules/ImprovementRecord.h"

namespace jobshop {

void ImprovementRecord::add(std::uint64_t iteration, Time makespan) {
  const std::lock_guard<std::mutex> lock(mutex_);
  improvements_.push_back({iteration, makespan});
}

Json::Value ImprovementRecord::toJsonValue4Bind() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  Json::Value list(Json::arrayValue);
  for (const Improvement& improvement : improvements_) {
    Json::Value& entry = list.append(Json::Value());
    entry["iteration"] = Json::UInt64(improvement.iteration);
    entry["makespan"] = Json::Int64(improvement.makespan);
  }
  return list;
}

}  // namespace jobshop
