// The JSON Schema and the reference of pipeline files.
#pragma once

#include <json/value.h>

#include <string>

#include "cppbind/ClassRegisterBase.h"
#include "libvarrow/Export.h"

namespace libvarrow {

/// Returns the JSON Schema of pipeline files in all three layouts, with the modules in `reg`:
///
///     std::ofstream("pipeline.schema.json")
///         << cppbind::schemaText(libvarrow::pipelineSchema(classes));
///
/// The keys tell the layout: "modules" that of ModuleExecutor; otherwise "named_modules" or
/// "chained_module" that of ModuleLoader::loadJson; otherwise "mainModule" that of
/// ModuleLoader::loadJsonV2. The schema cannot check that a name in "chained_module" exists;
/// cppbind::jsonSchema() lists the other differences from loading. It allows "$schema" at the top
/// of the file, which editors use and which the loaders reject in strict layouts.
///
/// Describes the classes, with the effects of cppbind::describe(). The result is the same on every
/// run.
LIBVARROW_API Json::Value pipelineSchema(const cppbind::ClassRegisterBase& reg);

/// Returns the reference of pipeline files, in Markdown: the layouts, and the keys of all modules
/// in `reg`. Describes the classes like pipelineSchema().
LIBVARROW_API std::string pipelineReference(const cppbind::ClassRegisterBase& reg);

}  // namespace libvarrow
