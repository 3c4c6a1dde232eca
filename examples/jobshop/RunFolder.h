// Where a run reads and writes.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>

#include "CommandLine.h"
#include "JobShopData.h"

namespace jobshop {

/// All paths are absolute: a run changes the current directory.
struct RunFolder {
  std::string pipelineName;  ///< as the user wrote it
  boost::filesystem::path pipeline;
  boost::filesystem::path folder;
  boost::filesystem::path dumps;
  boost::filesystem::path statistics;
  RunSettings settings;
};

/// Makes the run's folder.
RunFolder prepareFolder(const CommandLine& command);

/// Makes the folder the current directory, and removes the dumps of an earlier run in it. Throws
/// std::runtime_error when nothing can be written there.
void enterFolder(const RunFolder& run);

}  // namespace jobshop
