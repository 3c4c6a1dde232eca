// The record of a run's steps: steps.jsonl in its folder.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <chrono>
#include <fstream>
#include <string>
#include <vector>

#include "host/system.h"
#include "libvarrow/module/Module.h"

namespace libvarrow::host {

/// Writer of one line at the begin and one at the end of each step, flushed at once: after a crash
/// they tell which step ran.
class StepRecord {
 public:
  using Clock = std::chrono::steady_clock;

  /// A step that runs.
  struct Step {
    std::string name;         ///< "1_ChainedModule/0_Plan", in UTF-8; empty: the whole pipeline
    std::string place;        ///< "pipeline.json:12:5"
    std::string crashLine{};  ///< written last by a crash during the step; empty: none
    Clock::time_point begin{};
    std::chrono::microseconds processorTime{};  ///< of the process when the step began
  };

  /// Does nothing yet. The run began at `begin`.
  StepRecord(const boost::filesystem::path& folder, Clock::time_point begin);

  /// Creates the file. Throws std::runtime_error with the system's reason.
  void open();
  /// Starts the clocks of `step` and writes its first line.
  void begins(Step& step, Module& module, ModuleData& data);
  /// Writes the last line of a step.
  void ends(const Step& step, ModuleData& data);
  /// Writes the last line of a step that failed. Without key figures: the data may be in any state.
  void fails(const Step& step);
  /// Throws std::runtime_error when a line could not be written.
  void requireWhole() const;

 private:
  void beginLine(const char* event, const Step& step);
  // `key` is the text between the values: one addition instead of three.
  template <class T>
  void add(const char* key, const T& value);
  void addFigures(const char* key, ModuleData& data);
  void addUse(const Step& step);
  void endLine();

  const boost::filesystem::path file_;
  const Clock::time_point begin_;
  std::ofstream stream_;
  std::string line_;
  int error_ = 0;  // of the first line that could not be written
};

}  // namespace libvarrow::host
