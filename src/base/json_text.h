// JSON text in the system's forms. Wraps deprecated classes for parsing and writing, as newer ones
// lay out text differently.
#pragma once

#include <json/value.h>

#include <iosfwd>
#include <string>

namespace libvarrow::base::json_text {

/// Collected comments are part of the value and are written with it. Each of them costs the parser
/// time proportional to the length of the line on which it begins.
enum class Comments { Allowed, Collected };

/// Parses `text`. Returns false, with the parser's formatted messages in `errors`, when it is not
/// JSON or is nested too deep. Independent of the global locale. Throws std::bad_alloc when memory
/// runs out.
bool parse(const std::string& text, Json::Value& value, std::string& errors,
           Comments comments = Comments::Allowed);

/// Returns indented text with a line end.
std::string styled(const Json::Value& value, const std::string& indentation);

/// Returns one line with a line end.
std::string fast(const Json::Value& value);

/// Returns one line without a line end.
std::string onOneLine(const Json::Value& value);

}  // namespace libvarrow::base::json_text
