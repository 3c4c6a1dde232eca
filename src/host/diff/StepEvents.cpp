#include "host/diff/StepEvents.h"

namespace libvarrow::host {

StepEvents::StepEvents(Json::Value lines) : lines_(std::move(lines)) {
  for (const Json::Value& line : lines_) {
    StepEvent event{line["step"].asString(), 0, line["event"].asString() == "begin", false, &line};
    std::vector<std::size_t>& indices = indices_[{event.step, event.isBegin}];
    event.time = indices.size();
    indices.push_back(events_.size());
    events_.push_back(std::move(event));
  }
  for (const auto& kind : indices_) events_[kind.second.back()].isLast = true;
}

std::size_t StepEvents::find(const StepEvent& event) const {
  const auto found = indices_.find({event.step, event.isBegin});
  const bool isFound = found != indices_.end() && event.time < found->second.size();
  return isFound ? found->second[event.time] : kNone;
}

}  // namespace libvarrow::host
