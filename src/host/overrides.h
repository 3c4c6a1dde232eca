// Changes of a pipeline before it runs.
#pragma once

#include <cppbind/Description.h>
#include <json/value.h>

#include <string>
#include <vector>

#include "host/json_path.h"

namespace libvarrow::host {

/// Merges `patch` into `json` by the rules of RFC 7396: objects are merged, null removes a member,
/// and any other value replaces. Returns the paths of the values that were set.
std::vector<JsonPath> mergePatch(const Json::Value& patch, Json::Value& json);

/// Applies a setting to `json`: "modules[2].Plan.tries=5" sets one field, "Plan.tries=5" that of
/// every object of the class. The value of a text field is text unless it is quoted; that of
/// another field is JSON. Returns the paths of the values that were set. Throws std::runtime_error
/// when the path has no meaning or several.
std::vector<JsonPath> applySetting(const std::string& setting,
                                   const cppbind::Description& description, Json::Value& json);

}  // namespace libvarrow::host
