// Parts of JSON text, for records with one object in each line.
#pragma once

#include <json/value.h>

#include <chrono>
#include <string>

namespace libvarrow::host {

/// Returns a text of the program as JSON, in UTF-8. Bytes without a meaning become U+FFFD.
std::string jsonText(const std::string& text);

/// Returns a duration as a JSON number of seconds, in microseconds: "0.001230".
std::string jsonSeconds(std::chrono::nanoseconds time);

/// Returns `value` without line ends.
std::string jsonLine(const Json::Value& value);

}  // namespace libvarrow::host
