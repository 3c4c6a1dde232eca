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
      throw UsageError("no option " + argument);
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

Plans a job shop as the pipeline file says: which modules run, in which order, by which rules.

  PIPELINE.json    the modules to run. Paths of what it reads start from its own folder, paths of
                   what it writes from OUTPUT_FOLDER. A log.conf beside it sets up the logs.
  OUTPUT_FOLDER    the run's folder, "jobshop_run" when not given; made when missing. Files and
                   dumps of an earlier run in it are replaced.
  --instance FILE  the instance to plan, instead of the one that the pipeline names
  --help           this text

Exit status: 0 when the run succeeded; 1 when it failed, with one line on standard error that says
why; 2 for wrong arguments.
)";
}

}  // namespace jobshop
