// The JSON Schema and the reference of rule files.
#pragma once

#include <json/value.h>

#include <string>

#include "cppbind/ClassRegisterBase.h"
#include "libvarrow/Export.h"

namespace libvarrow {

/// Returns the JSON Schema of rule files, as RuleLoader reads them, with the rules in `reg`; its
/// other classes are not valid. cppbind::jsonSchema() lists the differences from loading. The
/// schema allows "$schema" at the top of a file that is one group, which editors use and which the
/// loader rejects.
///
/// Describes the classes, with the effects of cppbind::describe(). The result is the same on every
/// run.
LIBVARROW_API Json::Value ruleFileSchema(const cppbind::ClassRegisterBase& reg);

/// Returns the reference of rule files, in Markdown: the layout, and the keys of all rules in
/// `reg`. Describes the classes like ruleFileSchema().
LIBVARROW_API std::string ruleFileReference(const cppbind::ClassRegisterBase& reg);

}  // namespace libvarrow
