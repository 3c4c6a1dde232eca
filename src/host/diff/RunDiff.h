// Comparison of two runs.
#pragma once

#include <string>

#include "host/RunReader.h"
#include "host/diff/DiffReport.h"
#include "host/diff/OwnFolders.h"
#include "host/diff/StepEvents.h"
#include "host/diff/tree_diff.h"

namespace libvarrow::host {

/// Walks two runs in the order of their steps and adds each difference to a report, until that is
/// enough: pipeline, input files and plug-ins; key figures and dumps of each step; outcome; the
/// files that modules wrote. Times, memory, machine and folders are not compared.
class RunDiff {
 public:
  /// Throws std::runtime_error when a run cannot be read. The arguments must outlive the object.
  RunDiff(const RunReader& left, const RunReader& right, DiffReport& report);

  /// Compares the runs. Throws std::runtime_error when a file cannot be read. Call it once.
  void compare();
  /// Returns the reason why the record of a run is not complete; empty when both are.
  std::string incompleteness() const;

 private:
  void comparePipelines();
  void compareSteps();
  void compareEvents(const StepEvent& left, const StepEvent& right);
  void compareFigures(const StepEvent& left, const StepEvent& right);
  void compareDumps(const StepEvent& left, const StepEvent& right);
  void addTimes();
  void addOnly(const StepEvent& event, bool isLeft);
  void compareOutcomes();
  void compareWrittenFiles();
  void compareFilesElsewhere();
  void compareFileElsewhere(const boost::filesystem::path& left,
                            const boost::filesystem::path& right);
  bool hasComparableDumps();

  const RunReader& left_;
  const RunReader& right_;
  DiffReport& report_;
  const FoldersOfRuns texts_;
  const StepEvents leftEvents_;
  const StepEvents rightEvents_;
  bool comparesDumps_ = false;
};

}  // namespace libvarrow::host
