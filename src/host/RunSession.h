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

#include "libvarrow/host/RunOptions.h"
#include "libvarrow/module/RunObserver.h"

namespace libvarrow::host {

/// Places of a run's files.
struct RunPlaces {
  boost::filesystem::path folder;  ///< absolute: start of files that modules write
  boost::filesystem::path inputs;  ///< absolute: start of files that modules read
  std::string dumps;               ///< the dump path of the whole chain, with its trailing "/"
};

/// Observer that follows the steps, locates the files of modules and collects their reports.
class RunSession : public RunObserver {
 public:
  /// Returns the beginning of the line that a crash in this step writes last.
  using CrashLineOf = std::function<std::string(const std::string& step)>;

  /// `isEndAsked` (may be null) is a request from outside. Without `crashLineOf` the run leaves the
  /// line alone, of which the process has one.
  RunSession(RunPlaces places, const RunOptions& options, bool (*isEndAsked)(),
             CrashLineOf crashLineOf);
  ~RunSession() override;

  void stepBegins(Module& step, ModuleData& data) override;
  void stepEnds(Module& step, ModuleData& data) override;
  void stepFails(Module& step, ModuleData& data) noexcept override;
  void rulesBroken(const std::string& text) override;
  boost::filesystem::path outputPath(const boost::filesystem::path& path) override;
  boost::filesystem::path inputPath(const boost::filesystem::path& path) override;
  void fileWritten(const std::string& kind, const boost::filesystem::path& path) override;
  DumpLevel dumpLevel() const override;
  bool isEndRequested() const noexcept override;

  const RunPlaces& places() const { return places_; }
  /// Returns true when the step after which the run ends has ended.
  bool isUntilReached() const { return isUntilReached_; }
  /// Returns the innermost step that failed, "1_ChainedModule/0_Plan"; empty: none.
  const std::string& failedStep() const { return failedStep_; }
  /// Returns the last step that ended; empty: none.
  const std::string& lastStep() const { return lastStep_; }
  /// Returns the running step, for display. Thread-safe.
  std::string currentStep() const;
  /// Returns the texts of broken rules.
  std::vector<std::string> brokenRules() const;
  /// Returns the files written, as kind and path.
  std::vector<std::pair<std::string, std::string>> files() const;
  /// Returns the input files with their SHA-256.
  Json::Value inputs() const;

 private:
  std::string nameOf(const ModuleData& data) const;
  void showStep();

  const RunPlaces places_;
  const RunOptions& options_;
  bool (*const isEndAsked_)();
  const CrashLineOf crashLineOf_;
  std::vector<std::string> steps_;  // those that run, the outer first
  std::string lastStep_;
  std::string failedStep_;
  std::atomic<bool> isUntilReached_{false};

  mutable boost::mutex mutex_;  // protects everything below, which threads of modules change
  std::string shownStep_;
  std::vector<std::string> brokenRules_;
  std::vector<std::pair<std::string, std::string>> files_;
  Json::Value inputs_{Json::arrayValue};
};

}  // namespace libvarrow::host
