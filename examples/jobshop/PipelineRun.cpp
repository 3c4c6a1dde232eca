#include "PipelineRun.h"

#include <libvarrow/log/log.h>
#include <libvarrow/module/ModuleExecutor.h>
#include <libvarrow/statistics/TimedStatDumper.h>
#include <libvarrow/utility/DllManager.h>

#include <boost/dll/runtime_symbol_info.hpp>
#include <boost/filesystem/operations.hpp>
#include <stdexcept>

#include "FileCheck.h"
#include "OneLine.h"
#include "RunSummary.h"
#include "modules/registerModules.h"
#include "progress/runProgress.h"
#include "rules/registerRules.h"

namespace jobshop {

namespace {

namespace fs = boost::filesystem;

// Returns an absolute path, so that a "plugins" in the current directory is not used instead.
fs::path pluginFolder() {
  return boost::dll::program_location().parent_path() / "plugins";
}

void requireNoFaults(const RunFolder& run, const cppbind::ClassRegister& classes) {
  const std::size_t count = reportFaults(run, classes);
  if (count == 0) return;
  const std::string folder = pluginFolder().generic_string();
  throw std::runtime_error(std::to_string(count) + (count == 1 ? " error" : " errors") +
                           (fs::is_directory(folder) ? "" : "; no plug-ins in " + folder));
}

// Returns the name of the step that failed: it leaves its dump path in the data.
std::string failedStep(const RunFolder& run, const JobShopData& data) {
  const fs::path step = fs::path(data.dumpPath).lexically_relative(run.dumps);
  const std::string name = step.parent_path().generic_string();
  return name.empty() || name == "." ? "" : name + ": ";
}

}  // namespace

std::optional<std::string> runPipeline(const RunFolder& run) {
  InitRootLogger((run.settings.inputFolder / "log.conf").generic_string());
  // The plug-ins' code must outlive all their objects: statistics, modules, classes and errors.
  libvarrow::DllManager plugins;
  libvarrow::StatisticsContainer statistics("jobshop");
  const libvarrow::TimedStatDumper dumper(&statistics, run.statistics.generic_string());
  JobShopData data(run.settings);
  data.dumpPath = run.dumps.generic_string() + "/";
  data.statisticsContainer = &statistics;
  try {
    registerRules();
    const auto classes = registerModules();
    plugins.autoLoad(pluginFolder().generic_string());
    requireNoFaults(run, *classes);
    const libvarrow::ModuleExecutor executor(classes.get(), run.pipeline.generic_string(), false);
    addRunProgress(*executor.mainModule(), statistics);
    executor.process(&data);
  } catch (const std::exception& error) {
    LIBVARROW_LOG_ERROR("%s", oneLine(error.what()).c_str());
    return run.pipelineName + ": " + failedStep(run, data) + error.what();
  }
  printSummary(run, data);
  return std::nullopt;
}

}  // namespace jobshop
