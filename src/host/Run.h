// One run: a checked pipeline, in its folder, on a host's data.
#pragma once

#include <string>

#include "host/PipelineSource.h"
#include "host/ResumePoint.h"
#include "host/RunFolder.h"
#include "host/RunRecord.h"
#include "host/RunSession.h"
#include "host/records/LogWarnings.h"
#include "libvarrow/host/RunOptions.h"
#include "libvarrow/host/RunResult.h"
#include "libvarrow/module/ModuleData.h"
#include "libvarrow/statistics/StatisticsContainer.h"

namespace libvarrow::host {

/// Facts and functions that the program adds to a run. `isEndAsked` and `crashLine` are empty if
/// the run is one of several in its process.
struct RunContext {
  std::string program;             ///< the program's name
  bool (*isEndAsked)() = nullptr;  ///< true when a signal asked for the end
  bool setsCrashLine = false;      ///< the line that a crash writes last, of which there is one
  const LogWarnings* warnings = nullptr;  ///< of the log, if the run is the only one
};

/// Returns the absolute folder of inputs without links: that of the options or, without one, that
/// of the pipeline file.
boost::filesystem::path inputFolder(const RunOptions& options);

class Run {
 public:
  /// Makes nothing yet. `record` has begun. The arguments must outlive the object.
  Run(const RunOptions& options, const RunContext& context, const PipelineSource& source,
      const ResumePoint& from, const RunFolder& folder, RunRecord& record);

  /// Runs the pipeline on `data` and returns the outcome, also for exceptions. Restores the
  /// observer and the statistics container of `data`. Call it once.
  RunResult process(cppbind::ClassRegister& modules, ModuleData& data);

  const StatisticsContainer& statistics() const { return statistics_; }
  const RunSession& session() const { return session_; }

 private:
  void runChain(cppbind::ClassRegister& modules, ModuleData& data, RunResult& result);
  void judge(RunResult& result, bool isEnded, const std::string& exception);
  std::string bySignal() const;
  void fail(RunResult& result, const std::string& reason) const;
  void dumpAfterFailure(ModuleData& data) const;
  Json::Value facts() const;
  void writeRecords(RunResult& result);

  const RunOptions& options_;
  const RunContext& context_;
  const PipelineSource& source_;
  const ResumePoint& from_;
  const RunFolder& folder_;
  const StepRecord::Clock::time_point begin_ = StepRecord::Clock::now();
  const system::ProcessUse useBefore_ = system::processUse();
  StatisticsContainer statistics_;
  RunSession session_;
  RunRecord& record_;
};

}  // namespace libvarrow::host
