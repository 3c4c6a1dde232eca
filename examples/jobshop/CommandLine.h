// What the program is called with.
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

/// `arguments` are those behind the program's name. Throws UsageError.
CommandLine parseCommandLine(const std::vector<std::string>& arguments);

const char* usage();

}  // namespace jobshop
