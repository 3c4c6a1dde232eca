// Plans a job shop: runs the modules of a pipeline file in the folder of the run.
#include <libvarrow/env/process_init.h>

#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "OneLine.h"
#include "PipelineRun.h"
#include "RunFolder.h"

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int fail(const std::string& error, int status) {
  std::cerr << "jobshop: " << jobshop::oneLine(error) << std::endl;
  return status;
}

int run(const jobshop::CommandLine& command) {
  const jobshop::RunFolder folder = jobshop::prepareFolder(command);
  jobshop::enterFolder(folder);
  const auto error = jobshop::runPipeline(folder);
  return error ? fail(*error, kFailed) : 0;
}

}  // namespace

int main(int argc, char** argv) {
  libvarrow::porcessCommonInit();
  try {
    const auto command = jobshop::parseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    if (!command.help) return run(command);
    std::cout << jobshop::usage();
    return 0;
  } catch (const jobshop::UsageError& error) {
    return fail(std::string(error.what()) + "; see jobshop --help", kWrongUsage);
  } catch (const std::exception& error) {
    return fail(error.what(), kFailed);
  }
}
