// JSON values of descriptions in the form for readers.
#pragma once

#include <json/value.h>

#include "cppbind/Description.h"

namespace cppbind::detail {

/// Returns `json`, a value that `value` describes, with the numbers of float fields as the double
/// nearest to their shortest text: 0.1, not 0.100000001490116.
Json::Value shortened(const ValueDescription& value, Json::Value json);

/// Returns true when JSON can represent all numbers in `json`.
bool isFinite(const Json::Value& json);

}  // namespace cppbind::detail
