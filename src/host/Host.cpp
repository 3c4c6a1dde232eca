#include "libvarrow/host/Host.h"

#include <boost/filesystem/operations.hpp>
#include <boost/thread/lock_guard.hpp>
#include <boost/thread/mutex.hpp>
#include <exception>
#include <set>
#include <stdexcept>

#include "base/system_text.h"
#include "host/CommandRunner.h"
#include "host/HostState.h"
#include "host/PipelineSource.h"
#include "host/Run.h"
#include "host/commands/commands.h"
#include "host/fault_text.h"
#include "host/run_facts.h"
#include "libvarrow/module/ChainedModule.h"
#include "libvarrow/module/ChainedModuleV2.h"
#include "libvarrow/module/CommonModuleStatDumper.h"
#include "libvarrow/utility/RegistersManager.h"

namespace libvarrow {

namespace {

using Lock = boost::lock_guard<boost::mutex>;

// The registers of all hosts of the process.
class UsedRegisters {
 public:
  static void add(const std::string& name) {
    const Lock lock(mutex());
    if (names().insert(name).second) return;
    throw std::logic_error("another host has the register " + name);
  }
  static void remove(const std::string& name) {
    const Lock lock(mutex());
    names().erase(name);
  }

 private:
  static boost::mutex& mutex() {
    static boost::mutex mutex;
    return mutex;
  }
  static std::set<std::string>& names() {
    static std::set<std::string> names;
    return names;
  }
};

void removeClasses(const cppbind::ClassRegister& classes, const std::string& registerName) {
  while (!classes.empty()) {
    const std::string name = classes.classes().begin()->second.name;
    if (!RegistersManager::unregister(registerName, name)) return;
  }
}

template <class T>
void addOwnClass(cppbind::ClassRegister& classes, const std::string& name) {
  if (classes.find(name) == nullptr) classes.regClass<T>(name);
}

}  // namespace

struct Host::Imp {
  host::HostState state;
};

Host::Host(std::string name, std::string about, std::string moduleRegister,
           std::string ruleRegister)
    : imp_(std::make_unique<Imp>()) {
  host::HostState& state = imp_->state;
  state.moduleRegister = moduleRegister.empty() ? name + ".modules" : std::move(moduleRegister);
  state.ruleRegister = ruleRegister.empty() ? name + ".rules" : std::move(ruleRegister);
  state.name = std::move(name);
  state.about = std::move(about);
  UsedRegisters::add(state.moduleRegister);
  try {
    UsedRegisters::add(state.ruleRegister);
  } catch (const std::logic_error&) {
    UsedRegisters::remove(state.moduleRegister);
    throw;
  }
  state.modules = RegistersManager::createRegister(state.moduleRegister);
  state.rules = RegistersManager::createRegister(state.ruleRegister);
  addOwnClass<ChainedModule>(*state.modules, "ChainedModule");
  addOwnClass<ChainedModuleV2>(*state.modules, "ChainedModuleV2");
  addOwnClass<CommonModuleStatDumper>(*state.modules, "CommonModuleStatDumper");
  host::addCommands(state);
}

Host::~Host() {
  host::HostState& state = imp_->state;
  state.commands.clear();
  removeClasses(*state.modules, state.moduleRegister);
  removeClasses(*state.rules, state.ruleRegister);
  UsedRegisters::remove(state.moduleRegister);
  UsedRegisters::remove(state.ruleRegister);
}

cppbind::ClassRegister& Host::modules() {
  return *imp_->state.modules;
}

cppbind::ClassRegister& Host::rules() {
  return *imp_->state.rules;
}

void Host::setVersion(std::string version) {
  imp_->state.version = std::move(version);
}

void Host::setPluginFolder(std::string folder) {
  imp_->state.pluginFolder = std::move(folder);
}

void Host::loadPlugins() {
  imp_->state.loadPlugins();
}

void Host::addCommand(std::unique_ptr<Command> command) {
  auto& commands = imp_->state.commands;
  for (const auto& known : commands) {
    if (known->name() == command->name()) {
      throw std::logic_error("the command " + command->name() + " exists");
    }
  }
  commands.push_back(std::move(command));
}

void Host::addSetting(const std::string& name, const std::string& path, const std::string& about) {
  host::addSetting({name, path, about, /*isFile=*/false}, imp_->state);
}

void Host::addFileSetting(const std::string& name, const std::string& path,
                          const std::string& about) {
  host::addSetting({name, path, about, /*isFile=*/true}, imp_->state);
}

void Host::setSummaryOfData(SummaryOfData state) {
  imp_->state.summary = std::move(state);
}

int Host::run(int argc, char** argv, const DataFactory& createData) {
  imp_->state.createData = createData;
  return run(argc, argv);
}

int Host::run(int argc, char** argv) {
  imp_->state.arguments.assign(argv + (argc > 0 ? 1 : 0), argv + argc);
  return host::CommandRunner(*this, imp_->state).run();
}

RunResult Host::execute(const RunOptions& options, ModuleData& data) {
  host::HostState& state = imp_->state;
  RunResult result;
  try {
    if (options.folder.empty()) throw std::runtime_error("a run needs a folder");
    host::PipelineSource source(options, *state.modules);
    source.check(*state.modules, *state.rules, host::inputFolder(options));
    result.faults = source.faults();
    if (host::errorCount(result.faults) > 0) {
      result.end = RunResult::End::Faulty;
      result.error = host::firstError(result.faults);
      return result;
    }
    const host::ResumePoint from(options.from);
    from.requireDump(options.folder);
    const host::RunFolder folder(options.folder, options.overwrite);
    RunOptions recorded = options;
    recorded.from = from.folder();
    host::RunRecord record(folder.path(), host::runFacts(recorded, state));
    record.begin();
    const host::RunContext context{state.name};
    return host::Run(options, context, source, from, folder, record).process(*state.modules, data);
  } catch (const std::exception& error) {
    result.error = base::systemText(error.what());
  }
  return result;
}

}  // namespace libvarrow
