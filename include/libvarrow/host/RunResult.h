// The outcome of one run.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>
#include <vector>

#include "cppbind/Fault.h"
#include "libvarrow/host/Export.h"

namespace libvarrow {

/// Outcome of a run.
struct LIBVARROW_HOST_API RunResult {
  enum class End {
    Done,         ///< every step ran
    RulesBroken,  ///< every step ran, and a step reported broken rules
    Faulty,       ///< a file has faults; no step ran
    Failed,       ///< a step threw, or the run could not start
    Ended         ///< ended on request, with whole statistics
  };

  End end = End::Done;
  boost::filesystem::path folder;        ///< the run folder; empty when none was made
  std::vector<cppbind::Fault> faults;    ///< of the files
  std::vector<std::string> brokenRules;  ///< the texts of RunObserver::rulesBroken()
  std::string step;                      ///< the failed step, such as "1_ChainedModule/0_Plan"
  std::string error;                     ///< file, position, step and reason in one line

  /// Returns the exit status of a host.
  int status() const;
};

}  // namespace libvarrow
