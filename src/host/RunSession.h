// The observer of a run by its host.
#pragma once

#include <json/value.h>

#include <atomic>
#include <boost/filesystem/path.hpp>
#include <boost/thread/mutex.hpp>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/records/StepRecord.h"
#include "host/records/TraceRecord.h"
#include "libvarrow/host/RunOptions.h"
#include "libvarrow/module/RunObserver.h"

namespace libvarrow::host {

/// Places of a run's files.
struct RunPlaces {
  boost::filesystem::path folder;  ///< absolute: start of files that modules write
  boost::filesystem::path inputs;  ///< absolute: start of files that modules read
  std::string dumps;               ///< the dump path of the whole chain, with its trailing "/"
};

/// Observer that follows and records the steps, locates the files of modules and collects their
/// reports.
class RunSession : public RunObserver {
 public:
  /// Returns the place of a step in the pipeline file.
  using PlaceOf = std::function<std::string(const std::string& step)>;

  /// `isEndAsked` (may be null) is a request from outside. `crashName` begins the line that a crash
  /// writes last; if it is empty, the run leaves that line alone, of which the process has one.
  /// `from` is the first step to run; empty: all.
  RunSession(RunPlaces places, const RunOptions& options, bool (*isEndAsked)(), PlaceOf placeOf,
             std::string crashName, std::string from);
  ~RunSession() override;

  /// Creates steps.jsonl. Throws std::runtime_error with the system's reason.
  void openRecords();
  /// Writes trace.json. Throws std::runtime_error when it, or a line of steps.jsonl, could not be
  /// written.
  void closeRecords() const;

  void stepBegins(Module& step, ModuleData& data) override;
  void stepEnds(Module& step, ModuleData& data) override;
  void stepFails(Module& step, ModuleData& data) noexcept override;
  void rulesBroken(const std::string& text) override;
  boost::filesystem::path outputPath(const boost::filesystem::path& path) override;
  boost::filesystem::path inputPath(const boost::filesystem::path& path) override;
  void fileWritten(const std::string& kind, const boost::filesystem::path& path) override;
  DumpLevel dumpLevel() const override;
  bool isEndRequested() const noexcept override;
  void ruleKept(const std::string& text) override;
  void spanEnds(const std::string& name, StepRecord::Clock::time_point begin,
                StepRecord::Clock::time_point end) noexcept override;
  bool skipsStep(Module& step, const ModuleData& data) override;

  const RunPlaces& places() const { return places_; }
  /// Returns true when the step after which the run ends has ended.
  bool isUntilReached() const { return isUntilReached_; }
  /// Returns true when the first step to run has begun.
  bool isFromReached() const { return isFromReached_; }
  /// Returns the innermost step that failed, "1_ChainedModule/0_Plan"; empty: none. Names of steps
  /// are UTF-8.
  const std::string& failedStep() const { return failedStep_; }
  /// Returns the last step that ended; empty: none.
  const std::string& lastStep() const { return lastStep_; }
  /// Returns the running step, for display. Thread-safe.
  std::string currentStep() const;
  /// Returns the texts of broken rules.
  std::vector<std::string> brokenRules() const;
  /// Returns the texts of kept rules.
  std::vector<std::string> keptRules() const;
  /// Returns the files written, as kind and path.
  std::vector<std::pair<std::string, std::string>> files() const;
  /// Returns the input files with their SHA-256.
  Json::Value inputs() const;

 private:
  std::string nameOf(const ModuleData& data) const;
  std::string crashLineOf(const std::string& place, const std::string& step) const;
  void showStep();

  const StepRecord::Clock::time_point begin_ = StepRecord::Clock::now();
  const RunPlaces places_;
  const RunOptions& options_;
  bool (*const isEndAsked_)();
  const PlaceOf placeOf_;
  const std::string crashName_;
  const std::string crashLine_;  // between the steps
  const std::string from_;
  bool isFromReached_;
  StepRecord record_;
  TraceRecord trace_;
  std::vector<StepRecord::Step> steps_;  // those that run, the outer first
  std::string lastStep_;
  std::string failedStep_;
  std::atomic<bool> isUntilReached_{false};

  mutable boost::mutex mutex_;  // protects everything below, which threads of modules change
  std::string shownStep_;
  std::vector<std::string> brokenRules_;
  std::vector<std::string> keptRules_;
  std::vector<std::pair<std::string, std::string>> files_;
  Json::Value inputs_{Json::arrayValue};
};

}  // namespace libvarrow::host
