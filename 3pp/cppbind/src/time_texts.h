// Finds dates, times and durations that are not in the form in which they are written.
#pragma once

#include <json/value.h>

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "cppbind/Describer.h"

namespace cppbind::detail {

/// Walks through JSON along its description.
class TimeTexts {
 public:
  using Path = std::vector<std::string>;
  /// Receives the path and the form of a text that is accepted, but written otherwise.
  using Visit = std::function<void(const Path& path, const std::string& form)>;

  /// Uses the descriptions that `describer` has now.
  TimeTexts(const Describer& describer, Visit visit);

  /// Visits the texts in `json`, which is at `path`.
  void find(const ValueDescription& value, const Json::Value& json, Path path);
  /// Visits the texts in `json`, the fields of an object at `path`, whose last element is the name
  /// of the class. `value` describes all objects that may be there.
  void findInObject(const ValueDescription& value, const Json::Value& json, Path path);

 private:
  void walk(const ValueDescription& value, const Json::Value& json);
  void walkObject(const ObjectDescription& object, const Json::Value& json);
  void walkNamed(const ValueDescription& value, const Json::Value& json);
  const ObjectDescription* classOf(const ValueDescription& value, const std::string& name) const;

  // Runs `body` with a longer path.
  template <class Body>
  void below(std::string element, const Body& body) {
    path_.push_back(std::move(element));
    body();
    path_.pop_back();
  }

  Visit visit_;
  bool hasObjectsWithTimes_ = false;  // false: there is nothing to find in objects
  std::unordered_map<const ObjectDescription*, std::unordered_set<const Json::Value*>> walked_;
  Path path_;
  std::unordered_map<std::string, const ObjectDescription*> recordsById_;
  // Classes of several registers may have the same name, in lower case.
  std::unordered_map<std::string, std::vector<const ObjectDescription*>> classesByName_;
};

}  // namespace cppbind::detail
