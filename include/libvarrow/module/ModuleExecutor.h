// Builds and runs the pipeline of a file.
#pragma once

#include <boost/shared_ptr.hpp>
#include <string>

#include "cppbind/ClassRegister.h"
#include "libvarrow/Export.h"
#include "libvarrow/module/Module.h"

namespace libvarrow {

/// A pipeline's main chain, built from a pipeline file, {"modules": [{"ClassName": {...}}, ...]}.
///
///     cppbind::ClassRegister reg;
///     reg.regClass<libvarrow::ChainedModule>("ChainedModule");
///     reg.regClass<jobshop::Dispatch>("Dispatch");
///     libvarrow::ModuleExecutor executor(&reg, "pipeline.json", false);
///     executor.process(&data);
///
/// A copy shares the chain. Running a moved-from executor aborts.
class LIBVARROW_API ModuleExecutor {
 public:
  /// Builds the chain. `moduleRegister` (not null) is used only during construction. `confPath` is
  /// in the narrow encoding. With `ignoreUnknownKeys`, keys that no field claims are ignored in
  /// every object of the file.
  ///
  /// Throws std::runtime_error "conf PATH file not found!", cppbind::ParseErrorException (what()
  /// gives the place: "modules[2].Dispatch.rule: not found") and cppbind::ClassMissRegException.
  /// Aborts with a back-trace when the register is null.
  ModuleExecutor(cppbind::ClassRegister* moduleRegister, const std::string& confPath,
                 bool ignoreUnknownKeys);

  /// Runs process() of the main chain, whose name in the statistics is
  /// "Module::libvarrow::ChainedModule". An exception of a module passes unchanged; the data's
  /// dumpPath then identifies the module: "run/1_ChainedModule/0_Dispatch/".
  void process(ModuleData* data) const;

  /// Returns the chain; null after the executor was moved from.
  const boost::shared_ptr<Module>& mainModule() const { return mainModule_; }

 private:
  boost::shared_ptr<Module> mainModule_;
};

}  // namespace libvarrow
