// The JSON Schema of a description, for editors and other programs that check files.
#pragma once

#include <json/value.h>

#include <string>

#include "cppbind/Description.h"
#include "cppbind/Export.h"

namespace cppbind {

/// Returns the JSON Schema, draft-07, of `description.root`:
///
///     std::ofstream("orders.schema.json")
///         << cppbind::schemaText(cppbind::jsonSchema(cppbind::describe<Orders>(&classes)));
///
/// Each class and each record is a definition. A JSON value is valid when the binders read it, with
/// these exceptions:
/// - class names must be as registered;
/// - dates, times and durations must be as the library writes them; days such as 2024-02-30 are
///   valid;
/// - conditions that only the program can check, bounds of text, and allowed values of lists, sets
///   and maps are only texts;
/// - programs that store integers as double, such as editors, cannot check those beyond 2^53
///   exactly; bounds of float are written in the fewest digits;
/// - a class whose description is incomplete may have any further keys.
///
/// When the root is a record, a text as its member "$schema" is valid, too.
CPPBIND_API Json::Value jsonSchema(const Description& description);

/// Returns `schema` as indented text with a line end. Numbers have the fewest digits that read
/// back.
CPPBIND_API std::string schemaText(const Json::Value& schema);

}  // namespace cppbind
