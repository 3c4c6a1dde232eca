// A walk over the paths of a JSON value, as errors name them.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

namespace test_support {

/// Calls `visit(path, value)` for `json` and every value inside it. Restores `path`.
template <class Visit>
void forEachPath(const Json::Value& json, std::vector<std::string>& path, const Visit& visit) {
  visit(path, json);
  for (auto child = json.begin(); child != json.end(); ++child) {
    path.push_back(json.isArray() ? "[" + std::to_string(child.index()) + "]" : child.name());
    forEachPath(*child, path, visit);
    path.pop_back();
  }
}

}  // namespace test_support
