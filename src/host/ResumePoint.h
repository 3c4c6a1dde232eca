// The step of an earlier run with which a run continues.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>

#include "libvarrow/module/Module.h"

namespace libvarrow::host {

/// A step of an earlier run, with the dump of the data before it. Relative to its run folder, so
/// that the folder may come from another machine.
class ResumePoint {
 public:
  /// Finds the run of `folder`, "RUN/dump/1_ChainedModule/0_Plan". With an empty path, the
  /// run begins with its first step. Throws std::runtime_error when `folder` is not a path in the
  /// dumps of a run.
  explicit ResumePoint(const boost::filesystem::path& folder);

  /// Returns the absolute path of the step's dump, without links; empty: none.
  const boost::filesystem::path& folder() const { return folder_; }
  /// Returns the step, "1_ChainedModule/0_Plan"; empty: none.
  const std::string& step() const { return step_; }

  /// Throws std::runtime_error when `chain` has no such step, or when `until` ends before it.
  void requireStepOf(const Module& chain, const std::string& until) const;
  /// Throws std::runtime_error when the step has no dump of its data, or when that is in
  /// `runFolder`, which the new run would replace.
  void requireDump(const boost::filesystem::path& runFolder) const;
  /// Restores the data before the step. Throws std::runtime_error when the data cannot.
  void restore(ModuleData& data) const;

 private:
  boost::filesystem::path dump() const { return folder_ / "before_process"; }

  boost::filesystem::path folder_;
  std::string step_;
};

}  // namespace libvarrow::host
