#include "host/program_run.h"

#include <boost/filesystem/operations.hpp>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "host/PipelineSource.h"
#include "host/ProgressBar.h"
#include "host/Run.h"
#include "host/fault_text.h"
#include "host/json_string.h"
#include "host/one_line.h"
#include "host/run_facts.h"
#include "host/step_names.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/log/log.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

bool isEndAsked() {
  return system::EndSignals::received() != 0;
}

void printLine(const std::string& line) {
  system::writeError(line + '\n');
}

// Writes the faults to standard error, except a single error, which the last line contains.
void printFaults(const std::vector<FileFaults>& faults) {
  std::size_t count = 0;
  for (const FileFaults& file : faults) count += file.faults.errorCount + file.faults.warningCount;
  if (count == 1 && errorCount(faults) == 1) return;
  for (const FileFaults& file : faults) {
    for (const std::string& line : faultLines(file)) printLine(line);
  }
}

void logFaults(const std::vector<FileFaults>& faults) {
  for (const FileFaults& file : faults) {
    for (const std::string& line : faultLines(file)) LIBVARROW_LOG_WARN("%s", line.c_str());
  }
}

// Without a log.conf beside the pipeline file, the log is one file of the run.
constexpr const char* kLogConf = R"(log4cplus.rootLogger=INFO, FILE
log4cplus.appender.FILE=log4cplus::FileAppender
log4cplus.appender.FILE.File=log/run.log
log4cplus.appender.FILE.ImmediateFlush=true
log4cplus.appender.FILE.layout=log4cplus::PatternLayout
log4cplus.appender.FILE.layout.ConversionPattern=%D{%Y-%m-%d %H:%M:%S.%q} %-5p %m [%b:%L]%n
)";

void initLog(const fs::path& configured) {
  if (fs::exists(configured)) return InitRootLogger(configured.string());
  writeWhole("log/log.conf", kLogConf);
  InitRootLogger("log/log.conf");
}

std::string crashLineOf(const RunOptions& options, const HostState& state) {
  return oneLine(state.name + ": " + options.pipeline.generic_string());
}

// RAII guard: a module that calls exit() must not look like a run that was done. One object at a
// time.
class ExitGuard {
 public:
  ExitGuard(const std::string& program, const RunSession& session) {
    static const int isInstalled = std::atexit(onExit);
    static_cast<void>(isInstalled);
    program_ = &program;
    session_ = &session;
  }
  ~ExitGuard() { session_ = nullptr; }
  ExitGuard(const ExitGuard&) = delete;
  ExitGuard& operator=(const ExitGuard&) = delete;

 private:
  static void onExit() {
    if (session_ == nullptr) return;
    printLine(oneLine(*program_ + ": " + programText(session_->currentStep()) +
                      ": a module called exit()"));
    std::_Exit(kFailed);
  }

  static inline const std::string* program_ = nullptr;
  static inline const RunSession* session_ = nullptr;
};

void stateKeyFigures(ModuleData& data, Summary& summary) {
  const Json::Value info = data.getBaiscInfoJson();
  if (!info.isObject()) return;
  for (auto member = info.begin(); member != info.end(); ++member) {
    summary.addValue(utility::fromUtf8(member.name()), *member);
  }
}

std::string summaryText(const HostState& state, ModuleData& data, const Run& run,
                        const fs::path& folder, bool asJson) {
  Summary summary;
  if (state.summary) {
    state.summary(data, summary);
  } else {
    stateKeyFigures(data, summary);
  }
  summary.add("run folder", folder.generic_string());
  for (const auto& [kind, path] : run.session().files()) summary.add(kind, path);
  return summary.text(asJson);
}

// The run folder of an earlier run may have files that this run reads.
void requireOutside(const RunOptions& options) {
  if (!options.overwrite || !fs::is_directory(options.folder)) return;
  std::vector<fs::path> files = options.with;
  files.push_back(options.pipeline);
  const fs::path folder = fs::canonical(options.folder);
  for (const fs::path& file : files) {
    const fs::path relative = fs::canonical(file).lexically_relative(folder);
    if (!relative.empty() && *relative.begin() != "..") {
      throw UsageError(file.generic_string() + " is in the run folder, which --overwrite replaces");
    }
  }
}

// Called before the folder is made, which would not be empty for the next try.
ResumePoint requireSteps(const RunOptions& options, cppbind::ClassRegister& modules,
                         const PipelineSource& source) {
  try {
    ResumePoint from(options.from);
    if (options.until.empty() && from.step().empty()) return from;
    const boost::shared_ptr<Module> chain = source.load(modules);
    requireStep(*chain, options.until);
    from.requireStepOf(*chain, options.until);
    from.requireDump(options.folder);
    return from;
  } catch (const std::runtime_error& error) {
    throw UsageError(error.what());
  }
}

// RAII guard: a folder as the current directory, and standard output at a file in it.
class InFolder {
 public:
  InFolder(const fs::path& folder, system::ResultStream& results)
      : before_(fs::current_path()), results_(results) {
    fs::current_path(folder);
    fs::create_directories("log");
    results.printTo("log/output.txt");
  }
  ~InFolder() {
    boost::system::error_code ignored;  // the directory of the start may be gone
    fs::current_path(before_, ignored);
    results_.printToStandardError();
  }
  InFolder(const InFolder&) = delete;
  InFolder& operator=(const InFolder&) = delete;

 private:
  const fs::path before_;
  system::ResultStream& results_;
};

// Runs the checked pipeline. The data is destroyed before the caller unloads plug-ins.
ExitStatus runChecked(const RunOptions& options, const RunContext& context, HostState& state,
                      const PipelineSource& source, const ResumePoint& from,
                      const RunFolder& folder, RunRecord& record, bool asJson, std::ostream& out) {
  const std::unique_ptr<ModuleData> data = state.createData();
  if (data == nullptr) throw std::logic_error("the host creates no data");
  Run run(options, context, source, from, folder, record);
  const ExitGuard exitGuard(state.name, run.session());
  RunResult result;
  {
    const ProgressBar bar(run.statistics(), run.session(), system::terminalColumns());
    result = run.process(*state.modules, *data);
  }
  if (!result.error.empty()) LIBVARROW_LOG_ERROR("%s", result.error.c_str());
  state.lastLine = result.error;
  if (result.status() == kFailed) return kFailed;
  if (result.error.empty() && isEndAsked()) {
    state.lastLine = source.placeOf("") + ": ended by " +
                     system::signalName(system::EndSignals::received()) + " after the last step";
  }
  out << summaryText(state, *data, run, folder.path(), asJson);
  return result.status();
}

// Logs how many places each setting changed; more than one may surprise its user.
void tellChanges(const PipelineSource& source) {
  for (const auto& [setting, count] : source.changes()) {
    const std::string line = oneLine(setting + ": set in " + std::to_string(count) +
                                     (count == 1 ? " place" : " places"));
    LIBVARROW_LOG_INFO("%s", line.c_str());
    if (count > 1) printLine(line);
  }
}

}  // namespace

ExitStatus runPipeline(RunOptions options, HostState& state, system::ResultStream& results,
                       bool asJson, std::ostream& out) {
  if (state.createData == nullptr) throw std::logic_error("a host without data runs no pipeline");
  if (isEndAsked()) return kFailed;  // during an earlier run of the process
  setCrashLine(crashLineOf(options, state));
  state.loadPlugins();
  const fs::path logConf = fs::absolute(options.pipeline).parent_path() / "log.conf";
  options.inputs = inputFolder(options);
  PipelineSource source(options, *state.modules);
  source.check(*state.modules, *state.rules, options.inputs);
  printFaults(source.faults());
  if (errorCount(source.faults()) > 0) {
    state.lastLine = firstError(source.faults()) + state.missingPlugins(source.faults());
    return kFailed;
  }
  const ResumePoint from = requireSteps(options, *state.modules, source);
  options.from = from.folder();
  requireOutside(options);
  const system::EndSignals signals;  // from here on, something would be left half done
  const fs::path path = options.folder.empty()
                            ? newRunFolder(fs::absolute("runs"), options.pipeline)
                            : options.folder;
  const RunFolder folder(path, options.overwrite);
  RunRecord record(folder.path(), runFacts(options, state));
  record.begin();
  const InFolder inFolder(folder.path(), results);
  initLog(logConf);
  const LogWarnings warnings;
  const RunContext context{state.name, isEndAsked, /*setsCrashLine=*/true, &warnings};
  logFaults(source.faults());
  tellChanges(source);
  const ExitStatus status =
      runChecked(options, context, state, source, from, folder, record, asJson, out);
  const bool isNameUnknown = status == kFailed && options.folder.empty();
  if (isNameUnknown) printLine(oneLine("run folder  " + folder.path().generic_string()));
  return status;
}

}  // namespace libvarrow::host
