#include "modules/ImprovementRecord.h"

namespace jobshop {

void ImprovementRecord::add(std::uint64_t iteration, std::chrono::milliseconds time,
                            Time makespan) {
  const std::lock_guard<std::mutex> lock(mutex_);
  improvements_.push_back({iteration, time, makespan});
}

Json::Value ImprovementRecord::toJsonValue4Bind() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  Json::Value list(Json::arrayValue);
  for (const Improvement& improvement : improvements_) {
    Json::Value& entry = list.append(Json::Value());
    entry["iteration"] = Json::UInt64(improvement.iteration);
    entry["milliseconds"] = Json::Int64(improvement.time.count());
    entry["makespan"] = Json::Int64(improvement.makespan);
  }
  return list;
}

}  // namespace jobshop
