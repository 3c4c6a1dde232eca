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
/// Its commands are run, check, classes, schema and why; "orders --help" lists them. ChainedModule,
/// ChainedModuleV2 and CommonModuleStatDumper are registered.
///
/// The constructor changes nothing in the process except the two registers; the destructor removes
/// all classes from them. Not thread-safe, except execute().
class LIBVARROW_HOST_API Host {
 public:
  /// Creates a host. `name` is the program's name in messages; `about` is the first line of --help.
  /// `moduleRegister` and `ruleRegister` name the registers to which plug-ins add classes; empty
  /// means "NAME.modules" and "NAME.rules". Throws std::logic_error when another host uses one of
  /// them.
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
  /// Sets the folder of plug-ins: absolute, or relative to the program. Initially "plugins"; empty
  /// for no plug-ins. The option --plugins overrides it.
  void setPluginFolder(std::string folder);
  /// Loads the plug-ins; later calls do nothing. Throws like DllManager::autoLoad(). Commands that
  /// need classes call it. execute() does not: call it before.
  void loadPlugins();

  /// Adds a command. Throws std::logic_error when its name is taken.
  void addCommand(std::unique_ptr<Command> command);
  ///@{
  /// Adds the option `--NAME VALUE`, short for `--set PATH=VALUE`, to the commands run and check.
  /// The value of a file setting is a file name; a relative one starts from the directory in which
  /// the program was started. Throws std::logic_error when an option has the name.
  void addSetting(const std::string& name, const std::string& path, const std::string& about);
  void addFileSetting(const std::string& name, const std::string& path, const std::string& about);
  ///@}

  /// Sets the function that adds the result to the summary of a run, if the run is done or broke
  /// rules. Without it, the key figures of the data (getBaiscInfoJson()) are the result. The host
  /// adds the run folder and the files that steps recorded by addRunFile().
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
  /// and signal handlers, sets the log up and changes the current directory; afterwards text
  /// printed to standard output is lost. Plug-ins are unloaded before it returns. When a signal
  /// ends the run, the process ends by that signal. Call it first in main(), once.
  template <class Data>
  int run(int argc, char** argv) {
    return run(argc, argv, [] { return std::make_unique<Data>(); });
  }
  int run(int argc, char** argv, const DataFactory& createData);
  /// Offers only the commands that need no data.
  int run(int argc, char** argv);
  ///@}

  /// Runs a pipeline once in the calling process, for tests and for several runs in one process.
  /// Does not change signals, log, current directory or standard streams. The options must name a
  /// folder. Several threads may call it at the same time with different data and folders, after
  /// useCrashStack().
  ///
  /// Exceptions of the run become RunResult::End::Failed. On return `data` has the observer and the
  /// statistics container that it had before; after a failure its dumpPath is that of the failed
  /// step. Preconditions: `data` is destroyed before the host, and no module changes the current
  /// directory.
  RunResult execute(const RunOptions& options, ModuleData& data);

 private:
  using SummaryOfData = std::function<void(const ModuleData&, Summary&)>;
  void setSummaryOfData(SummaryOfData state);

  struct Imp;
  std::unique_ptr<Imp> imp_;
};

}  // namespace libvarrow
