// JSON text for readers: numbers in the fewest digits that read back, characters as they are.
#pragma once

#include <json/value.h>

#include <string>

namespace libvarrow::base::readable_json {

/// Returns `value` on one line: {"sizes": [0.1, 2], "text": "é"}. NaN and infinity are "NaN", "inf"
/// and "-inf", which is not JSON.
std::string onOneLine(const Json::Value& value);

/// Returns `value` on indented lines, with a line end. Arrays and objects that fit in a line are on
/// one line.
std::string indented(const Json::Value& value);

}  // namespace libvarrow::base::readable_json
