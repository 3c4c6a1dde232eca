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
    run.settings.instanceFile = fs::absolute(command.instanceFile).string();
  }
  return run;
}

// Logs, and whatever a module writes under a relative path, land in the run's folder. Dumps of an
// earlier run there would mix with this one's; a folder that only happens to have that name is left
// alone.
void enterFolder(const RunFolder& run) {
  fs::current_path(run.folder);
  if (!std::ofstream(run.statistics.string())) {
    throw std::runtime_error("cannot write " + run.statistics.string());
  }
  if (fs::exists(run.dumps / "in_info.json")) fs::remove_all(run.dumps);
}

}  // namespace jobshop
