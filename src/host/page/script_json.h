// JSON text inside an HTML page.
#pragma once

#include <string>
#include <string_view>

namespace libvarrow::host {

/// Appends JSON to the text of a `script` element, without the blanks between its tokens. "<", ">",
/// "&" and control characters in strings become escapes, so that no text ends the element, and
/// invalid UTF-8 becomes U+FFFD. Text that is not JSON cannot leave the element either.
void appendScriptJson(std::string& html, std::string_view json);

}  // namespace libvarrow::host
