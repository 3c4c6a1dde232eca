// The command line of the program.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace jobshop {

struct CommandLine {
  bool help = false;
  std::string pipelineFile;
  std::string outputFolder = "jobshop_run";
  std::string instanceFile;  ///< empty: the one that the pipeline names
};

class UsageError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Returns the parsed `arguments`, without the program's name. Throws UsageError when they are
/// invalid.
CommandLine parseCommandLine(const std::vector<std::string>& arguments);

const char* usage();

}  // namespace jobshop
