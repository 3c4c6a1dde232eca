// Comparison of two JSON values.
#pragma once

#include <json/value.h>

#include <string>

#include "host/diff/DiffReport.h"
#include "host/diff/OwnFolders.h"
#include "host/json_path.h"

namespace libvarrow::host {

/// Adds each difference of two values of two runs to `report`, until that is enough. Its place is
/// `title` and the path, which begins with `path`. A null pointer is a missing value. Numbers are
/// equal when their texts are, also those that are not finite; texts may differ in the folders of
/// the runs.
void diffJson(const Json::Value* left, const Json::Value* right, const FoldersOfRuns& folders,
              const std::string& title, JsonPath path, DiffReport& report);

}  // namespace libvarrow::host
