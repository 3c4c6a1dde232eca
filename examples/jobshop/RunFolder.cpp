#include "RunFolder.h"

#include <boost/filesystem/operations.hpp>
#include <fstream>
#include <stdexcept>

#include "Terminal.h"

namespace jobshop {

namespace fs = boost::filesystem;

RunFolder prepareFolder(const CommandLine& command) {
  RunFolder run;
  run.pipelineName = command.pipelineFile;
  run.pipeline = fs::absolute(command.pipelineFile);
  fs::create_directories(command.outputFolder);
  run.folder = fs::canonical(command.outputFolder);
  run.dumps = run.folder / "dump";
  run.statistics = run.folder / "statistics.json";
  run.settings.inputFolder = run.pipeline.parent_path();
  run.settings.progressColumns = terminalColumns();
  if (!command.instanceFile.empty()) {
    run.settings.instanceFile = fs::absolute(command.instanceFile).generic_string();
  }
  return run;
}

// Logs, and files that modules write to relative paths, are in the run's folder. Dumps of an
// earlier run would mix with those of this one; another folder of that name is kept.
void enterFolder(const RunFolder& run) {
  fs::current_path(run.folder);
  if (!std::ofstream(run.statistics.generic_string())) {
    throw std::runtime_error("cannot write " + run.statistics.generic_string());
  }
  if (fs::exists(run.dumps / "in_info.json")) fs::remove_all(run.dumps);
}

}  // namespace jobshop
