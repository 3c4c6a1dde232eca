// Parts of JSON text, for records of many lines. Faster than the writers of the JSON library.
#pragma once

#include <json/value.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace libvarrow::host {

/// Appends a text in UTF-8 as JSON. Bytes that are not UTF-8 become U+FFFD.
void appendJson(std::string& json, std::string_view text);

/// Appends a number.
void appendJson(std::string& json, std::uint64_t number);

/// Appends a duration as a number of seconds, in microseconds: "0.001230".
void appendJson(std::string& json, std::chrono::nanoseconds time);

/// Appends `value`. The elements of the outer `depth` levels begin on lines of their own; the rest
/// has no line ends.
void appendJson(std::string& json, const Json::Value& value, int depth = 0);

}  // namespace libvarrow::host
