// The events of a run's steps.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace libvarrow::host {

/// The begin or the end of a step.
struct StepEvent {
  std::string step;  ///< "1_ChainedModule/0_Plan"; empty: the whole pipeline
  std::size_t time;  ///< 0 when the step runs for the first time
  bool isBegin;
  bool isLast = false;  ///< later events of this kind are of other steps
  const Json::Value* line;
};

/// The events of a run in their order.
class StepEvents {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  /// Takes the lines of steps.jsonl.
  explicit StepEvents(Json::Value lines);
  StepEvents(const StepEvents&) = delete;
  StepEvents& operator=(const StepEvents&) = delete;

  std::size_t size() const { return events_.size(); }
  const StepEvent& operator[](std::size_t index) const { return events_[index]; }
  /// Returns the index of the same event of another run; kNone when this run has none.
  std::size_t find(const StepEvent& event) const;
  /// Returns true when a step of this run has this name.
  bool hasStep(const std::string& step) const { return indices_.count({step, true}) > 0; }

 private:
  using Kind = std::pair<std::string, bool>;  // step and whether it begins

  Json::Value lines_;
  std::vector<StepEvent> events_;
  std::map<Kind, std::vector<std::size_t>> indices_;  // of the events of each kind
};

}  // namespace libvarrow::host
