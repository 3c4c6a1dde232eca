#include "CommandLine.h"

namespace jobshop {

CommandLine parseCommandLine(const std::vector<std::string>& arguments) {
  CommandLine command;
  std::vector<std::string> operands;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--help" || argument == "-h") {
      command.help = true;
      return command;
    }
    if (argument == "--instance") {
      if (++i == arguments.size() || arguments[i].empty()) {
        throw UsageError("--instance needs a file");
      }
      command.instanceFile = arguments[i];
    } else if (argument.size() > 1 && argument.front() == '-') {
      throw UsageError("unknown option " + argument);
    } else if (argument.empty()) {
      throw UsageError("an argument is empty");
    } else {
      operands.push_back(argument);
    }
  }
  if (operands.empty()) throw UsageError("no pipeline file given");
  if (operands.size() > 2) throw UsageError("too many arguments");
  command.pipelineFile = operands[0];
  if (operands.size() == 2) command.outputFolder = operands[1];
  return command;
}

const char* usage() {
  return R"(Usage: jobshop [--instance FILE] PIPELINE.json [OUTPUT_FOLDER]

Plans a job shop. The pipeline file selects the modules, their order and their settings.

  PIPELINE.json    the modules to run. Input paths are relative to its folder, output paths to
                   OUTPUT_FOLDER. A log.conf in its folder configures the logs.
  OUTPUT_FOLDER    the run's folder, by default "jobshop_run"; created if missing. Files and dumps
                   of an earlier run in it are replaced.
  --instance FILE  the instance to plan, in place of that of the pipeline file
  --help           this text

Before the run, all faults of the pipeline file and its rule files are written to standard error.

Exit status: 0 when the run succeeded; 1 when it failed, with the reason in the last line on
standard error; 2 for wrong arguments.
)";
}

}  // namespace jobshop
