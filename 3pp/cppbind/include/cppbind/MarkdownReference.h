// The reference of a description for users, in Markdown.
#pragma once

#include <string>

#include "cppbind/Description.h"
#include "cppbind/Export.h"

namespace cppbind {

/// Returns a section for each class and each record in `description`, under the headings
/// "## Classes" and "## Records": its text, and a table of its keys with their values, conditions,
/// defaults and texts. Texts of the host are Markdown, except that "|" and "<" are escaped.
CPPBIND_API std::string markdownReference(const Description& description);

}  // namespace cppbind
