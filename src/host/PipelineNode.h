// A place in a pipeline, with the description of the values that it takes.
#pragma once

#include <cppbind/Description.h>
#include <json/value.h>

#include <functional>
#include <string>
#include <vector>

#include "host/json_path.h"

namespace libvarrow::host {

/// A value of a pipeline. Refers to the JSON and to the description.
struct PipelineNode {
  Json::Value* json;
  JsonPath path{};
  /// The description of the value; null: unknown.
  const cppbind::ValueDescription* kind = nullptr;
  /// The class or record whose fields the value has; null: unknown or none.
  const cppbind::ObjectDescription* object = nullptr;

  /// Returns the keys that the value has or may have.
  std::vector<std::string> keys() const;
  /// Returns true when the value may have only the keys of keys().
  bool hasOnlyKnownKeys() const { return object != nullptr && object->isComplete(); }
  /// Returns the member with this key, which is created as null if it is missing.
  PipelineNode member(const std::string& key, const cppbind::Description& description) const;
  /// Returns the element with this index, which must exist.
  PipelineNode element(Json::ArrayIndex index) const;
};

/// Returns the class with this name, ignoring case, or null.
const cppbind::ObjectDescription* classNamed(const std::string& name,
                                             const cppbind::Description& description);

/// Calls `visit` with the fields of every object of a registered class, {"ClassName": fields}.
void forEachClassObject(const PipelineNode& node, const cppbind::Description& description,
                        const std::function<void(const PipelineNode&)>& visit);

}  // namespace libvarrow::host
