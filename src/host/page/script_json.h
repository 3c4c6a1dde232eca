// JSON text inside an HTML page.
#pragma once

#include <string>
#include <string_view>

namespace libvarrow::host {

/// Appends JSON to the text of a `script` element, without the blanks between its tokens. In every
/// string "<", ">" and "&" become escapes, so that no text ends the element, and invalid UTF-8
/// becomes U+FFFD. JSON that is not valid stays so, but cannot leave the element either.
void appendScriptJson(std::string& html, std::string_view json);

}  // namespace libvarrow::host
