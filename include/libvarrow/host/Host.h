// A program that runs pipelines: command line, run folders, logs, plug-ins and exit statuses.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "cppbind/ClassRegister.h"
#include "libvarrow/host/Command.h"
#include "libvarrow/host/Export.h"
#include "libvarrow/host/RunOptions.h"
#include "libvarrow/host/RunResult.h"
#include "libvarrow/host/Summary.h"
#include "libvarrow/module/Module.h"
#include "libvarrow/xrule/Rule.h"

namespace libvarrow {

/// A program that runs pipelines of registered modules:
///
///     int main(int argc, char** argv) {
///       libvarrow::Host host("orders", "Plans orders on one machine.");
///       host.regClass<ReadOrders>("ReadOrders");
///       host.regClass<Plan>("Plan");
///       host.regRule<Late>("Late");
///       return host.run<PlanData>(argc, argv);
///     }
///
/// Its commands are run, check, classes and schema; "orders --help" lists them. ChainedModule,
/// ChainedModuleV2 and CommonModuleStatDumper are registered.
///
/// The constructor changes nothing in the process except the two registers; the destructor removes
/// all classes from them. Not thread-safe, except execute().
class LIBVARROW_HOST_API Host {
 public:
  /// Creates a host. `name` is the program's name in messages; `about` is the first line of --help.
  /// `moduleRegister` and `ruleRegister` are the named registers that plug-ins add to; empty:
  /// "NAME.modules" and "NAME.rules". Throws std::logic_error when another host has one of them.
  Host(std::string name, std::string about, std::string moduleRegister = "",
       std::string ruleRegister = "");
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  ~Host();

  /// Registers a module under `className`, as a pipeline file names it. Aborts when the name is
  /// taken.
  template <class T>
  void regClass(const std::string& className) {
    static_assert(std::is_base_of_v<Module, T>, "a module derives from libvarrow::Module");
    modules().regClass<T>(className);
  }
  /// Registers a rule under `className`, as a rule file names it. Aborts when the name is taken.
  template <class T>
  void regRule(const std::string& className) {
    static_assert(std::is_base_of_v<Rule, T>, "a rule derives from libvarrow::Rule");
    rules().regClass<T>(className);
  }
  ///@{
  /// Returns the register of modules, or of rules.
  cppbind::ClassRegister& modules();
  cppbind::ClassRegister& rules();
  ///@}

  /// Sets the version of the program, which --version prints beside that of the library.
  void setVersion(std::string version);
  /// Sets the folder of plug-ins: absolute, or relative to the program. Initially "plugins"; empty:
  /// none. The option --plugins replaces it.
  void setPluginFolder(std::string folder);
  /// Loads the plug-ins; later calls do nothing. Throws as DllManager::autoLoad() does. The
  /// commands that need classes call it; call it before the first execute(), which does not.
  void loadPlugins();

  /// Adds a command. Throws std::logic_error when its name is taken.
  void addCommand(std::unique_ptr<Command> command);
  ///@{
  /// Adds `--NAME VALUE` to the commands run and check: the same as `--set PATH=VALUE`. A relative
  /// file starts from the directory in which the program was started. Throws std::logic_error when
  /// a setting has the name.
  void addSetting(const std::string& name, const std::string& path, const std::string& about);
  void addFileSetting(const std::string& name, const std::string& path, const std::string& about);
  ///@}

  /// Sets the function that states the result of a run that was done or broke rules. Without one,
  /// the key figures of the data are stated (getBaiscInfoJson()). The host adds the run folder and
  /// the files that steps recorded by addRunFile().
  template <class Data>
  void setSummary(std::function<void(const Data&, Summary&)> state) {
    setSummaryOfData([state = std::move(state)](const ModuleData& data, Summary& summary) {
      state(static_cast<const Data&>(data), summary);
    });
  }

  /// Function that creates the data of a run.
  using DataFactory = std::function<std::unique_ptr<ModuleData>()>;
  ///@{
  /// Runs the command that `argv` gives and returns the exit status. Throws nothing. Installs crash
  /// and signal handlers, sets the log up and changes the current directory; afterwards standard
  /// output is closed. Plug-ins are unloaded before it returns. A run that a signal ends does not
  /// return. Call it first in main(), once.
  template <class Data>
  int run(int argc, char** argv) {
    return run(argc, argv, [] { return std::make_unique<Data>(); });
  }
  int run(int argc, char** argv, const DataFactory& createData);
  /// Has only the commands that need no data.
  int run(int argc, char** argv);
  ///@}

  /// Runs a pipeline once in the calling process, without changing signals, log, current directory
  /// or standard streams: for tests, and for several runs in one process. The options must name a
  /// folder. Several threads may call it at the same time with different data and folders, after
  /// useCrashStack().
  ///
  /// Exceptions of the run become RunResult::End::Failed. `data` must be destroyed before the host.
  /// On return its observer and its statistics container are those of before; after a failure its
  /// dumpPath is that of the failed step. Modules that change the current directory must not run.
  RunResult execute(const RunOptions& options, ModuleData& data);

 private:
  using SummaryOfData = std::function<void(const ModuleData&, Summary&)>;
  void setSummaryOfData(SummaryOfData state);

  struct Imp;
  std::unique_ptr<Imp> imp_;
};

}  // namespace libvarrow
