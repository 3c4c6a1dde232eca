// A program that runs pipelines: command line, run folders, logs, plug-ins and exit statuses.
#pragma once

#include <boost/shared_ptr.hpp>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cppbind/ClassRegister.h"
#include "libvarrow/host/Export.h"
#include "libvarrow/host/RunOptions.h"
#include "libvarrow/host/RunResult.h"
#include "libvarrow/module/Module.h"
#include "libvarrow/xrule/Rule.h"

namespace libvarrow {

class Command;
class HostImp;

/// Exit statuses of a host. A signal that ends the run is not a status: the process ends by it.
enum ExitStatus {
  kDone = 0,        ///< the command did its work
  kFailed = 1,      ///< it failed; the last line on standard error gives the place and the reason
  kWrongUsage = 2,  ///< the command line is wrong
  kRulesBroken = 3  ///< the run is complete, and its plan breaks rules
};

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
/// The commands are run, check, classes and schema; "orders --help" lists them. ChainedModule and
/// CommonModuleStatDumper are registered.
///
/// Create one Host first in main(), before the process has threads. The host owns the loaded
/// plug-ins; data, modules and caught errors of its runs are destroyed before them. Registration is
/// not thread-safe; execute() is, once registration has ended.
class LIBVARROW_HOST_API Host {
 public:
  /// Creates a host. `name` is the program's name in messages and also selects the named registers
  /// that plug-ins add to: "NAME.modules" and "NAME.rules". `about` is the first line of --help.
  Host(std::string name, std::string about);
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  /// Unloads the plug-ins.
  ~Host();

  /// Registers a module under `className`, as a pipeline file names it. Throws when the name is
  /// taken.
  template <class T>
  void regClass(const std::string& className) {
    modules().regClass<T>(className);
  }
  /// Registers a rule under `className`, as a rule file names it. Throws when the name is taken.
  template <class T>
  void regRule(const std::string& className) {
    rules().regClass<T>(className);
  }
  /// The registers, for classes that regClass() and regRule() do not cover.
  cppbind::ClassRegister& modules();
  cppbind::ClassRegister& rules();

  /// Sets the version that --version prints. Initially the version of the library.
  void setVersion(std::string version);
  /// Sets the folder of plug-ins: absolute, or relative to the program. Initially "plugins"; empty:
  /// none. The option --plugins replaces it.
  void setPluginFolder(std::string folder);

  /// Adds a command, see Command. Throws std::logic_error when its name is taken.
  void addCommand(std::unique_ptr<Command> command);
  /// Adds an option to the command run: `--NAME VALUE`. The value is set before the data is
  /// created; `value` must outlive the host.
  void addOption(const std::string& name, std::string& value, const std::string& about);
  /// Adds `--NAME` without a value to the command run.
  void addFlag(const std::string& name, bool& value, const std::string& about);

  /// Creates the data of a run. Called by run and execute(), once for each run, with the options
  /// set and the run folder as the current directory.
  using DataFactory = std::function<std::unique_ptr<ModuleData>()>;
  /// Prints the result of a complete run to standard output: one fact a line.
  using Summary = std::function<void(const ModuleData&, std::ostream&)>;
  void setSummary(Summary summary);

  ///@{
  /// Runs the command that `argv` gives and returns the exit status. Throws nothing. Installs
  /// crash and signal handlers, sets the log up and changes the current directory: for main().
  template <class Data>
  int run(int argc, char** argv) {
    return run(argc, argv, [] { return std::make_unique<Data>(); });
  }
  int run(int argc, char** argv, const DataFactory& createData);
  ///@}

  /// Runs a pipeline once in the calling process, without a change of signals, log, current
  /// directory or standard streams: for tests, and for several runs in one process. Several
  /// threads may call it at the same time with different run folders.
  RunResult execute(const RunOptions& options, ModuleData& data);

 private:
  std::unique_ptr<HostImp> imp_;
};

}  // namespace libvarrow
