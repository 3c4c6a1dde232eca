// The paths of a pipeline's steps.
#pragma once

#include <json/value.h>

#include <string>
#include <string_view>

#include "host/json_path.h"

namespace libvarrow::host {

/// Finds steps in the JSON of a pipeline, in any layout. Remembers the chain of the last step:
/// steps of one chain are found without a walk from the root.
class StepPaths {
 public:
  /// Refers to `pipeline`.
  explicit StepPaths(const Json::Value& pipeline);

  /// Returns the path to the class of a step, "1_ChainedModule/0_Plan"; of an empty name that of
  /// the pipeline. Returns the path of the innermost known step for one inside another class than a
  /// chain. It is valid until the next call.
  const JsonPath& find(std::string_view step);

 private:
  struct Chain {
    const Json::Value* steps = nullptr;    // a list; null: the steps are not known
    const Json::Value* modules = nullptr;  // by name, if the steps are names
    JsonPath path{};
  };

  Chain wholePipeline() const;
  Chain chainOf(std::string_view step) const;

  // Appends the names of step and class to `path`. Returns the fields; null: they are not known.
  static const Json::Value* enterStep(const Chain& chain, std::string_view step, JsonPath& path);
  static const Json::Value* enterModule(const Json::Value& module, JsonPath& path);
  static Chain chainAt(const Json::Value* fields, JsonPath path);

  const Json::Value& pipeline_;
  std::string name_;  // of the last chain
  Chain chain_;
  JsonPath path_;
};

}  // namespace libvarrow::host
