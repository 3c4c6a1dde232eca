// JSON text in the forms that the system reads and writes, behind the parser's and the writers'
// deprecated classes: newer ones lay text out differently.
#pragma once

#include <json/value.h>

#include <iosfwd>
#include <string>

namespace libvarrow::base::json_text {

/// Collected comments are part of the value and are written with it. They take the parser time by
/// their number times the length of the line on which they begin.
enum class Comments { Allowed, Collected };

/// Parses `text`. False, with the parser's formatted messages in `errors`, when it is not JSON or
/// nested too deep. Numbers are read the same under every global locale. Throws std::bad_alloc.
bool parse(const std::string& text, Json::Value& value, std::string& errors,
           Comments comments = Comments::Allowed);

/// Indented text with a line end.
std::string styled(const Json::Value& value, const std::string& indentation);

/// One line with a line end.
std::string fast(const Json::Value& value);

/// As fast(), without the line end.
std::string onOneLine(const Json::Value& value);

}  // namespace libvarrow::base::json_text
