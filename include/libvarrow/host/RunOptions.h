// The options of one run.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>
#include <vector>

#include "libvarrow/module/RunObserver.h"

namespace libvarrow {

/// Options of a run. Relative paths start from the current directory.
struct RunOptions {
  boost::filesystem::path pipeline{};           ///< the pipeline file
  boost::filesystem::path folder{};             ///< the run folder: new or empty
  bool overwrite = false;                       ///< replaces an earlier run in the folder
  std::vector<boost::filesystem::path> with{};  ///< merged into the pipeline in order (RFC 7396)
  /// Applied after `with`, in order: "modules[2].Dispatch.tries=5", or "Dispatch.rule=SPT" for each
  /// Dispatch; in UTF-8, like JSON.
  std::vector<std::string> set{};
  boost::filesystem::path inputs{};  ///< of input files; empty: the pipeline's folder
  DumpLevel dumps = DumpLevel::All;  ///< the files of each step
  /// Ends after this step, "1_ChainedModule/0_Plan", in UTF-8; empty: last.
  std::string until{};
  /// Continues an earlier run with this step, by the folder of its dumps,
  /// "runs/latest/dump/2_Plan"; empty: begins with the first step.
  boost::filesystem::path from{};
  /// Called after the host's own observer; may reduce the dumps and end the run. Not owned.
  RunObserver* observer = nullptr;
};

}  // namespace libvarrow
