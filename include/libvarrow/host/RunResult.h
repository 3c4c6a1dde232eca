// The outcome of one run.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>
#include <vector>

#include "cppbind/Fault.h"

namespace libvarrow {

/// Exit statuses of a host. When a signal ends the run, the process ends by that signal instead.
enum ExitStatus {
  kDone = 0,        ///< the command did its work
  kFailed = 1,      ///< it failed; the last line on standard error gives the place and the reason
  kWrongUsage = 2,  ///< the command line is wrong
  kRulesBroken = 3  ///< the plan breaks rules
};

/// The faults of one file, or of one override.
struct FileFaults {
  std::string origin{};      ///< the file's name, or "--set Plan.tries=x"
  cppbind::Faults faults{};  ///< errors and warnings, in the order of their places
};

/// Outcome of a run.
struct RunResult {
  /// The way in which a run ended.
  enum class End {
    Done,         ///< every step ran, or every one until RunOptions::until
    RulesBroken,  ///< a step reported broken rules, and no step failed otherwise
    Faulty,       ///< a file has faults; no step ran
    Failed,       ///< a step threw, or the run could not start
    Ended         ///< ended on request before the last step, with whole statistics
  };

  End end = End::Failed;             ///< how the run ended
  boost::filesystem::path folder{};  ///< the run folder; empty when none was made
  std::vector<FileFaults> faults{};  ///< of the files; a run with warnings only is done
  /// The texts of reportRulesBroken(), in the encoding of the system.
  std::vector<std::string> brokenRules{};
  std::string step{};  ///< the failed step, "1_ChainedModule/0_Plan", in UTF-8
  /// File, position, step and reason in one line, in the encoding of the system.
  std::string error{};

  /// Returns the exit status: kDone, kRulesBroken, or kFailed for the other ends.
  ExitStatus status() const {
    return end == End::Done ? kDone : end == End::RulesBroken ? kRulesBroken : kFailed;
  }
};

}  // namespace libvarrow
