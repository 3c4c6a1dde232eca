// Validation by a JSON Schema, by another program.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

namespace test_support {

/// Returns for each document whether it is valid for the schema in `schemaText`. Fails when the
/// schema is not valid draft-07. With `asDouble` the program stores integers as double.
std::vector<bool> validBySchema(const std::string& schemaText,
                                const std::vector<Json::Value>& documents, bool asDouble = false);

}  // namespace test_support
