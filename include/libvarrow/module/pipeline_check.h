// Finds all faults of a pipeline file, without running it.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <optional>
#include <string>

#include "cppbind/ClassRegisterBase.h"
#include "cppbind/Fault.h"
#include "libvarrow/Export.h"

namespace cppbind {
class Checker;
}

namespace libvarrow {

/// Layouts of a pipeline.
enum class PipelineLayout {
  Chain,  ///< {"modules": [...]}, of ModuleExecutor and ModuleLoader::loadChainedModule()
  Named,  ///< {"named_modules": {...}, "chained_module": [...]}, of ModuleLoader::loadJson()
  Object  ///< {"mainModule": {...}}, of ModuleLoader::loadJsonV2()
};

/// Returns the layout that the keys of `root` belong to; nothing for other values, such as rule
/// files.
LIBVARROW_API std::optional<PipelineLayout> pipelineLayout(const Json::Value& root);

/// Returns true when a key of `root` is one of a layout, or probably a misspelt one.
LIBVARROW_API bool resemblesPipeline(const Json::Value& root);

///@{
/// Returns all faults of a pipeline in any layout; see cppbind::Checker. A value without a layout
/// is checked as a chain. `reg` creates the modules: of the named layout it is
/// ModuleLoader::classRegister(). `ignoreUnknownKeys` is that of ModuleExecutor.
///
/// Modules are created, but process() is not called. Structure that makes ModuleLoader abort is an
/// error, too. A root key that ModuleLoader ignores is a warning. Prints and logs nothing. Throws
/// only std::bad_alloc.
LIBVARROW_API cppbind::Faults checkPipelineFile(const boost::filesystem::path& path,
                                                const cppbind::ClassRegisterBase& reg,
                                                bool ignoreUnknownKeys = false);
LIBVARROW_API cppbind::Faults checkPipelineText(const std::string& text,
                                                const cppbind::ClassRegisterBase& reg,
                                                bool ignoreUnknownKeys = false);
///@}
/// Returns the same for the text that `checker` parsed. Precondition: its register is that of the
/// modules.
LIBVARROW_API cppbind::Faults checkPipeline(cppbind::Checker& checker,
                                            bool ignoreUnknownKeys = false);

}  // namespace libvarrow
