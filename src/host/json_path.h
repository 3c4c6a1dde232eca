// Paths into JSON values, as errors write them.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

namespace libvarrow::host {

/// Keys and indices: {"modules", "[2]", "Plan"}.
using JsonPath = std::vector<std::string>;

/// Returns the path as text: "modules[2].Plan".
std::string pathText(const JsonPath& path);

/// Returns true when `path` begins with `beginning`.
bool beginsWith(const JsonPath& path, const JsonPath& beginning);

/// Returns "[2]" for 2.
std::string indexText(Json::ArrayIndex index);

}  // namespace libvarrow::host
