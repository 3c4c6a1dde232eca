#include "host/program_run.h"

#include <boost/filesystem/operations.hpp>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "host/PipelineSource.h"
#include "host/ProgressBar.h"
#include "host/Run.h"
#include "host/fault_text.h"
#include "host/one_line.h"
#include "host/run_facts.h"
#include "host/step_names.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/log/log.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

bool isEndAsked() {
  return system::EndSignals::received() != 0;
}

void printLine(const std::string& line) {
  system::writeError(line + '\n');
}

// Writes every fault to standard error, except one that is the last line itself.
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

void stateKeyFigures(ModuleData& data, Summary& summary) {
  const Json::Value info = data.getBaiscInfoJson();
  if (!info.isObject()) return;
  for (auto member = info.begin(); member != info.end(); ++member) {
    summary.add(member.name(), member->isString() ? member->asString() : oneLineOf(*member));
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

// Called before the folder is made, which would not be empty for the next try.
void requireUntil(const RunOptions& options, cppbind::ClassRegister& modules,
                  const PipelineSource& source) {
  if (options.until.empty()) return;
  const boost::shared_ptr<Module> chain = source.load(modules);
  try {
    requireStep(*chain, options.until);
  } catch (const std::runtime_error& error) {
    throw UsageError(error.what());
  }
}

// Runs the checked pipeline. The data is destroyed before the caller unloads plug-ins.
ExitStatus runChecked(const RunOptions& options, HostState& state, const PipelineSource& source,
                      const RunFolder& folder, const Json::Value& facts, bool asJson,
                      std::ostream& out) {
  const RunContext context{state.name, isEndAsked, crashLineOf(options, state), facts};
  const std::unique_ptr<ModuleData> data = state.createData();
  Run run(options, context, source, folder);
  RunResult result;
  {
    const ProgressBar bar(run.statistics(), run.session(), system::terminalColumns());
    result = run.process(*state.modules, *data);
  }
  if (result.status() != kFailed) out << summaryText(state, *data, run, folder.path(), asJson);
  if (!result.error.empty()) LIBVARROW_LOG_ERROR("%s", result.error.c_str());
  state.lastLine = result.error;
  state.endSignal = system::EndSignals::received();
  return result.status();
}

}  // namespace

ExitStatus runPipeline(RunOptions options, HostState& state, system::ResultStream& results,
                       bool asJson, std::ostream& out) {
  const system::EndSignals signals;
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
  requireUntil(options, *state.modules, source);
  const Json::Value facts = runFacts(options, state);  // from this directory
  const fs::path path = options.folder.empty()
                            ? newRunFolder(fs::absolute("runs"), options.pipeline)
                            : options.folder;
  const RunFolder folder(path, options.overwrite);
  fs::current_path(folder.path());
  fs::create_directories("log");
  results.printTo("log/output.txt");
  initLog(logConf);
  logFaults(source.faults());
  return runChecked(options, state, source, folder, facts, asJson, out);
}

}  // namespace libvarrow::host
