// The options of one run.
#pragma once

#include <boost/filesystem/path.hpp>
#include <functional>
#include <string>
#include <vector>

#include "libvarrow/host/Export.h"
#include "libvarrow/module/RunObserver.h"

namespace libvarrow {

/// Change of a pipeline before it runs.
struct LIBVARROW_HOST_API Override {
  enum class Kind {
    Set,  ///< PATH=VALUE, such as "modules[2].Dispatch.tries=5" or "Dispatch.rule=SPT"
    With  ///< a JSON file that is merged into the pipeline (RFC 7396)
  };
  Kind kind;
  std::string text;
};

/// Options of a run, as the command run has them. Relative paths start from the current directory.
struct LIBVARROW_HOST_API RunOptions {
  boost::filesystem::path pipeline;  ///< the pipeline file
  boost::filesystem::path folder;    ///< the run folder; empty: runs/TIME_PIPELINE
  bool overwrite = false;            ///< replace an earlier run in the folder
  std::vector<Override> overrides;   ///< files first, then settings in their order
  boost::filesystem::path inputs;    ///< of InputFile fields; empty: the pipeline's folder
  DumpLevel dumps = DumpLevel::All;  ///< the files of each step
  std::string until;                 ///< end after this step, such as "1_Plan"; empty: the last
  std::function<bool()> isEndRequested;  ///< asked between steps, thread-safe; may be empty
};

}  // namespace libvarrow
