// Pipelines from JSON in three layouts.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>
#include <map>
#include <string>

#include "cppbind/ClassRegister.h"
#include "libvarrow/Export.h"
#include "libvarrow/module/ChainedModule.h"
#include "libvarrow/module/Module.h"

namespace libvarrow {

/// Turns pipeline descriptions into modules. Has a class register of its own, which knows
/// "ChainedModule" and "CommonModuleStatDumper"; register the host's classes in it first:
///
///     libvarrow::ModuleLoader loader;
///     loader.classRegister().regClass<jobshop::Dispatch>("Dispatch");
///     loader.loadFile("pipeline.json");
///     loader.mainModule()->process(&data);
///
/// Fields and classes that do not fit throw cppbind::ParseErrorException and
/// cppbind::ClassMissRegException, and leave the loader as it was. A broken structure of the named
/// layout ends the process, as said below. Not thread safe.
class LIBVARROW_API ModuleLoader {
 public:
  /// Name to module.
  using NamedModules = std::map<std::string, boost::shared_ptr<Module>>;

  ModuleLoader();

  /// What the loads create from; the loader's own.
  cppbind::ClassRegister& classRegister() { return classRegister_; }
  /// Those of the last load that had any.
  const NamedModules& namedModules() const { return named_modules; }
  /// Null until a load sets it.
  const boost::shared_ptr<Module>& mainModule() const { return mainModule_; }

  /// loadJson of the file's value. Throws cppbind::ParseErrorException, "Can not open file [PATH]"
  /// among others.
  void loadFile(const boost::filesystem::path& path);

  /// The named layout: {"named_modules": {"name": {"ClassName": {...}}, ...},
  /// "chained_module": ["name", ...]}. Each key that is there replaces what was loaded before;
  /// other keys are passed over.
  void loadJson(const Json::Value& jv);

  /// The object layout: {"mainModule": {"ClassName": {...}}}, created through `reg`, strict about
  /// unknown keys. Sets the main module only.
  void loadJsonV2(const Json::Value& jv, cppbind::ClassRegisterBase* reg);

  /// The chain layout of ModuleExecutor's file: {"modules": [...]}, strict about unknown keys. The
  /// caller owns the result.
  ChainedModule* loadChainedModule(const Json::Value& jv);

  /// The value of "named_modules". An object without exactly one class name ends the process.
  NamedModules loadNamedModules(const Json::Value& jv);

  /// The value of "chained_module"; the caller owns the result. No array, an element that is no
  /// string and an unknown name end the process. A name that stands twice is one module run twice.
  ChainedModule* loadOneChainModule(const Json::Value& jv);

 private:
  Module* loadOneModule(const Json::Value& jv);

  cppbind::ClassRegister classRegister_;
  NamedModules named_modules;  // named as the printed assertions say
  boost::shared_ptr<Module> mainModule_;
};

}  // namespace libvarrow
