// The paths that a run reads from and writes to.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>

#include "CommandLine.h"
#include "JobShopData.h"

namespace jobshop {

/// Paths of a run. All are absolute, since a run changes the current directory.
struct RunFolder {
  std::string pipelineName;  ///< as the user wrote it
  boost::filesystem::path pipeline;
  boost::filesystem::path folder;
  boost::filesystem::path dumps;
  boost::filesystem::path statistics;
  RunSettings settings;
};

/// Creates the run's folder and returns its paths.
RunFolder prepareFolder(const CommandLine& command);

/// Changes the current directory to the folder, and removes dumps of an earlier run. Throws
/// std::runtime_error when the folder is not writable.
void enterFolder(const RunFolder& run);

}  // namespace jobshop
