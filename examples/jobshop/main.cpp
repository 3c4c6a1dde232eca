// Plans a job shop: runs the modules of a pipeline file in a folder of the run's own.
#include <libvarrow/backtrace/BackTrace.h>
#include <libvarrow/log/log.h>
#include <libvarrow/module/ModuleExecutor.h>
#include <libvarrow/statistics/StatisticsContainer.h>
#include <libvarrow/statistics/TimedStatDumper.h>

#include <boost/filesystem/operations.hpp>
#include <exception>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "JobShopData.h"
#include "OneLine.h"
#include "modules/registerModules.h"

namespace {

namespace fs = boost::filesystem;

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

struct Run {
  std::string pipelineName;  // as the user wrote it
  fs::path pipeline;
  fs::path folder;
  fs::path dumps;
  fs::path statistics;
  jobshop::RunSettings settings;
};

// Makes the run's folder. All paths absolute: the run changes the current directory.
Run prepare(const jobshop::CommandLine& command) {
  Run run;
  run.pipelineName = command.pipelineFile;
  run.pipeline = fs::absolute(command.pipelineFile);
  fs::create_directories(command.outputFolder);
  run.folder = fs::canonical(command.outputFolder);
  run.dumps = run.folder / "dump";
  run.statistics = run.folder / "statistics.json";
  run.settings.inputFolder = run.pipeline.parent_path();
  if (!command.instanceFile.empty()) {
    run.settings.instanceFile = fs::absolute(command.instanceFile).string();
  }
  return run;
}

// Logs, and whatever a module writes under a relative path, land in the run's folder. Dumps of an
// earlier run there would mix with this one's; a folder that only happens to have that name is left
// alone.
void enterFolder(const Run& run) {
  fs::current_path(run.folder);
  if (!std::ofstream(run.statistics.string())) {
    throw std::runtime_error("cannot write " + run.statistics.string());
  }
  if (fs::exists(run.dumps / "in_info.json")) fs::remove_all(run.dumps);
}

void printSummary(const Run& run, const jobshop::JobShopData& data) {
  const auto line = [](const std::string& label, const std::string& text) {
    std::cout << std::left << std::setw(13) << label << jobshop::oneLine(text) << '\n';
  };
  if (data.hasInstance()) {
    const jobshop::Instance& instance = data.instance();
    line("instance", instance.name + ", " + std::to_string(instance.jobs.size()) + " jobs by " +
                         std::to_string(instance.machineCount) + " machines");
  }
  if (data.hasSchedule()) {
    const jobshop::Schedule& schedule = data.schedule();
    line("makespan", std::to_string(schedule.makespan()) + " (" + schedule.origin +
                         "), lower bound " + std::to_string(data.lowerBound()));
    const jobshop::ShopClock& clock = data.calendar().clock();
    if (clock.isSet()) line("clock", clock.at(0) + " to " + clock.at(schedule.makespan()));
  }
  line("run folder", run.folder.string());
  line("statistics", run.statistics.string());
  line("dumps", run.dumps.string());
  for (const auto& file : data.writtenFiles()) line(file.kind, file.path.string());
}

void runPipeline(const Run& run, jobshop::JobShopData& data) {
  libvarrow::StatisticsContainer statistics("jobshop");
  const libvarrow::TimedStatDumper dumper(&statistics, run.statistics.string());
  data.dumpPath = run.dumps.string() + "/";
  data.statisticsContainer = &statistics;

  cppbind::ClassRegister classes;
  jobshop::registerModules(classes);
  const libvarrow::ModuleExecutor executor(&classes, run.pipeline.string(), false);
  executor.process(&data);
}

// A step that fails leaves its dump path in the data, which tells which one it was.
std::string failedStep(const Run& run, const jobshop::JobShopData& data) {
  const fs::path step = fs::path(data.dumpPath).lexically_relative(run.dumps);
  const std::string name = step.parent_path().generic_string();
  return name.empty() || name == "." ? "" : name + ": ";
}

void runOnce(const Run& run) {
  libvarrow::init_error_handler(false);
  InitRootLogger((run.settings.inputFolder / "log.conf").string());
  jobshop::JobShopData data(run.settings);
  try {
    runPipeline(run, data);
  } catch (const std::exception& error) {
    LIBVARROW_LOG_ERROR("%s", jobshop::oneLine(error.what()).c_str());
    throw std::runtime_error(run.pipelineName + ": " + failedStep(run, data) + error.what());
  }
  printSummary(run, data);
}

int fail(const std::exception& error, const std::string& hint, int status) {
  std::cerr << "jobshop: " << jobshop::oneLine(error.what()) << hint << std::endl;
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const auto command = jobshop::parseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    if (command.help) {
      std::cout << jobshop::usage();
      return 0;
    }
    const Run run = prepare(command);
    enterFolder(run);
    runOnce(run);
    return 0;
  } catch (const jobshop::UsageError& error) {
    return fail(error, "; see jobshop --help", kWrongUsage);
  } catch (const std::exception& error) {
    return fail(error, "", kFailed);
  }
}
