// Loads pipelines from JSON in three layouts.
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

/// A loader of pipelines. Its own class register knows "ChainedModule" and
/// "CommonModuleStatDumper"; register the host's classes in it first:
///
///     libvarrow::ModuleLoader loader;
///     loader.classRegister().regClass<jobshop::Dispatch>("Dispatch");
///     loader.loadFile("pipeline.json");
///     loader.mainModule()->process(&data);
///
/// Throws cppbind::ParseErrorException and cppbind::ClassMissRegException when a field or a class
/// does not fit; the loader then stays unchanged. Aborts when the structure of the named layout is
/// invalid, as described below. Not thread-safe.
class LIBVARROW_API ModuleLoader {
 public:
  /// Modules by name.
  using NamedModules = std::map<std::string, boost::shared_ptr<Module>>;

  ModuleLoader();

  /// Returns the loader's register, from which it creates modules.
  cppbind::ClassRegister& classRegister() { return classRegister_; }
  /// Returns the modules of the last load that had named modules.
  const NamedModules& namedModules() const { return named_modules; }
  /// Returns the main module; null until a load sets it.
  const boost::shared_ptr<Module>& mainModule() const { return mainModule_; }

  /// Loads the file's value with loadJson. Throws cppbind::ParseErrorException, among others with
  /// "Can not open file [PATH]".
  void loadFile(const boost::filesystem::path& path);

  /// Loads the named layout: {"named_modules": {"name": {"ClassName": {...}}, ...},
  /// "chained_module": ["name", ...]}. Each key that is present replaces its earlier value; other
  /// keys are ignored.
  void loadJson(const Json::Value& jv);

  /// Loads the object layout: {"mainModule": {"ClassName": {...}}}, created through `reg`. Throws
  /// for unknown keys. Sets only the main module.
  void loadJsonV2(const Json::Value& jv, cppbind::ClassRegisterBase* reg);

  /// Returns the chain of ModuleExecutor's layout: {"modules": [...]}; the caller owns it. Throws
  /// for unknown keys.
  ChainedModule* loadChainedModule(const Json::Value& jv);

  /// Returns the modules that `jv`, the value of "named_modules", describes. Aborts when an object
  /// does not have exactly one class name.
  NamedModules loadNamedModules(const Json::Value& jv);

  /// Returns the chain that `jv`, the value of "chained_module", describes; the caller owns it.
  /// Aborts when the value is not an array, an element is not a string, or a name is unknown. A
  /// name that occurs twice is one module that runs twice.
  ChainedModule* loadOneChainModule(const Json::Value& jv);

 private:
  Module* loadOneModule(const Json::Value& jv);

  cppbind::ClassRegister classRegister_;
  NamedModules named_modules;  // printed in assertions under this name
  boost::shared_ptr<Module> mainModule_;
};

}  // namespace libvarrow
