// The host's entry to a pipeline file.
#pragma once

#include <boost/shared_ptr.hpp>
#include <string>

#include "cppbind/ClassRegister.h"
#include "libvarrow/Export.h"
#include "libvarrow/module/Module.h"

namespace libvarrow {

/// Builds the main chain from a pipeline file, {"modules": [{"ClassName": {...}}, ...]}.
///
///     cppbind::ClassRegister reg;
///     reg.regClass<libvarrow::ChainedModule>("ChainedModule");
///     reg.regClass<jobshop::Dispatch>("Dispatch");
///     libvarrow::ModuleExecutor executor(&reg, "pipeline.json", false);
///     executor.process(&data);
///
/// A copy shares the chain; one that was moved from has none, and running it ends the process.
class LIBVARROW_API ModuleExecutor {
 public:
  /// `moduleRegister` (not null) is used during construction only. `confPath` is in the narrow
  /// encoding. With `ignoreUnknownKeys`, keys that no field claims are passed over in every object
  /// of the file.
  ///
  /// Throws std::runtime_error "conf PATH file not found!", cppbind::ParseErrorException (what()
  /// says where: "modules[2].Dispatch.rule: not found") and cppbind::ClassMissRegException. A null
  /// register ends the process with a back-trace.
  ModuleExecutor(cppbind::ClassRegister* moduleRegister, const std::string& confPath,
                 bool ignoreUnknownKeys);

  /// Runs the pipeline: process() of the main chain, which stands in the statistics as
  /// "Module::libvarrow::ChainedModule". What a module throws passes unchanged; the data's dumpPath
  /// then tells which one it was: "run/1_ChainedModule/0_Dispatch/".
  void process(ModuleData* data) const;

  /// The chain; null after the executor was moved from.
  const boost::shared_ptr<Module>& mainModule() const { return mainModule_; }

 private:
  boost::shared_ptr<Module> mainModule_;
};

}  // namespace libvarrow
