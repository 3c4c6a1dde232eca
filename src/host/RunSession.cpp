#include "host/RunSession.h"

#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <boost/thread/lock_guard.hpp>
#include <stdexcept>
#include <utility>

#include "base/system_text.h"
#include "host/checksum.h"
#include "host/json_string.h"
#include "host/one_line.h"
#include "host/run_file_names.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/log/log.h"
#include "libvarrow/module/ModuleData.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;
using Lock = boost::lock_guard<boost::mutex>;

bool isInside(const std::string& step, const std::string& chain) {
  return step.size() > chain.size() && step.compare(0, chain.size(), chain) == 0 &&
         (chain.empty() || step[chain.size()] == '/');
}

}  // namespace

RunSession::RunSession(RunPlaces places, const RunOptions& options, bool (*isEndAsked)(),
                       PlaceOf placeOf, std::string crashName, std::string from)
    : places_(std::move(places)),
      options_(options),
      isEndAsked_(isEndAsked),
      placeOf_(std::move(placeOf)),
      crashName_(std::move(crashName)),
      crashLine_(crashLineOf(placeOf_(""), "")),
      from_(std::move(from)),
      isFromReached_(from_.empty()),
      record_(places_.folder, begin_),
      trace_(begin_) {
  showStep();
}

RunSession::~RunSession() = default;

void RunSession::openRecords() {
  record_.open();
}

void RunSession::closeRecords() const {
  trace_.write(places_.folder);
  record_.requireWhole();
}

// A step's name is the part of its dump path that the chains append.
std::string RunSession::nameOf(const ModuleData& data) const {
  const std::string& path = data.dumpPath;
  if (path.compare(0, places_.dumps.size(), places_.dumps) != 0) return stepOfPath(path);
  const bool endsInSlash = path.size() > places_.dumps.size() && path.back() == '/';
  return stepOfPath(path.substr(places_.dumps.size(),
                                path.size() - places_.dumps.size() - (endsInSlash ? 1 : 0)));
}

void RunSession::showStep() {
  if (!crashName_.empty()) setCrashLine(steps_.empty() ? crashLine_ : steps_.back().crashLine);
  const Lock lock(mutex_);
  shownStep_ = steps_.empty() ? std::string_view() : steps_.back().name;
}

std::string RunSession::crashLineOf(const std::string& place, const std::string& step) const {
  std::string line;
  if (crashName_.empty()) return line;
  line.reserve(crashName_.size() + place.size() + step.size() + 4);
  line.append(crashName_).append(": ").append(place);
  if (!step.empty()) line.append(": ").append(programText(step));
  return oneLine(line);
}

void RunSession::stepBegins(Module& step, ModuleData& data) {
  failedStep_.clear();  // handled by its chain
  std::string name = nameOf(data);
  std::string place = placeOf_(name);
  std::string crashLine = crashLineOf(place, name);
  steps_.push_back({std::move(name), std::move(place), std::move(crashLine)});
  showStep();
  record_.begins(steps_.back(), step, data);
  if (options_.observer != nullptr) options_.observer->stepBegins(step, data);
}

void RunSession::stepEnds(Module& step, ModuleData& data) {
  failedStep_.clear();
  record_.ends(steps_.back(), data);
  trace_.addStep(steps_.back().name, steps_.back().begin);
  lastStep_ = steps_.back().name;
  if (!options_.until.empty() && lastStep_ == options_.until) isUntilReached_ = true;
  steps_.pop_back();
  showStep();
  if (options_.observer != nullptr) options_.observer->stepEnds(step, data);
}

void RunSession::stepFails(Module& step, ModuleData& data) noexcept {
  try {
    record_.fails(steps_.back());
    trace_.addStep(steps_.back().name, steps_.back().begin);
  } catch (const std::exception&) {
    // Out of memory: the record lacks the end of the step.
  }
  if (failedStep_.empty()) failedStep_ = std::move(steps_.back().name);
  steps_.pop_back();
  try {
    showStep();  // of the chain, which may go on
  } catch (const std::exception&) {
    // The step shown is the one that failed.
  }
  if (options_.observer != nullptr) options_.observer->stepFails(step, data);
}

void RunSession::spanEnds(const std::string& name, StepRecord::Clock::time_point begin,
                          StepRecord::Clock::time_point end) noexcept {
  try {
    trace_.addSpan(name, begin, end);
  } catch (const std::exception&) {
    // Out of memory: the timeline lacks the span.
  }
  if (options_.observer != nullptr) options_.observer->spanEnds(name, begin, end);
}

// Enters the chains around the first step to run.
bool RunSession::skipsStep(Module& step, const ModuleData& data) {
  if (!isFromReached_) {
    const std::string name = nameOf(data);
    isFromReached_ = name == from_;
    if (!isFromReached_ && !isInside(from_, name)) return true;
  }
  return options_.observer != nullptr && options_.observer->skipsStep(step, data);
}

void RunSession::rulesBroken(const std::string& text) {
  {
    std::string shown = base::systemText(text);
    const Lock lock(mutex_);
    brokenRules_.push_back(std::move(shown));
  }
  if (options_.observer != nullptr) options_.observer->rulesBroken(text);
}

void RunSession::ruleKept(const std::string& text) {
  {
    std::string shown = base::systemText(text);
    const Lock lock(mutex_);
    keptRules_.push_back(std::move(shown));
  }
  if (options_.observer != nullptr) options_.observer->ruleKept(text);
}

fs::path RunSession::outputPath(const fs::path& path) {
  const fs::path file = fs::absolute(path, places_.folder).lexically_normal();
  if (file.parent_path() == places_.folder && isFileOfHost(file.filename().string())) {
    throw std::runtime_error(path.generic_string() + " is a file of the run itself");
  }
  return file;
}

fs::path RunSession::inputPath(const fs::path& path) {
  const fs::path file = fs::absolute(path, places_.inputs);
  Json::Value entry(Json::objectValue);
  entry["file"] = jsonString(file);
  const std::string sum = checksum(file);
  if (!sum.empty()) {
    entry["sha256"] = sum;
  } else {
    LIBVARROW_LOG_WARN("%s/run.json: no checksum of %s", places_.folder.generic_string().c_str(),
                       file.generic_string().c_str());
  }
  const Lock lock(mutex_);
  for (const Json::Value& known : inputs_) {
    if (known == entry) return file;
  }
  inputs_.append(std::move(entry));
  return file;
}

void RunSession::fileWritten(const std::string& kind, const fs::path& path) {
  {
    const Lock lock(mutex_);
    files_.emplace_back(base::systemText(kind),
                        fs::absolute(path, places_.folder).generic_string());
  }
  if (options_.observer != nullptr) options_.observer->fileWritten(kind, path);
}

DumpLevel RunSession::dumpLevel() const {
  const DumpLevel own = options_.dumps;
  if (options_.observer == nullptr) return own;
  return std::max(own, options_.observer->dumpLevel());
}

bool RunSession::isEndRequested() const noexcept {
  return isUntilReached_ || (isEndAsked_ != nullptr && isEndAsked_()) ||
         (options_.observer != nullptr && options_.observer->isEndRequested());
}

std::string RunSession::currentStep() const {
  const Lock lock(mutex_);
  return shownStep_;
}

std::vector<std::string> RunSession::brokenRules() const {
  const Lock lock(mutex_);
  return brokenRules_;
}

std::vector<std::string> RunSession::keptRules() const {
  const Lock lock(mutex_);
  return keptRules_;
}

std::vector<std::pair<std::string, std::string>> RunSession::files() const {
  const Lock lock(mutex_);
  return files_;
}

Json::Value RunSession::inputs() const {
  const Lock lock(mutex_);
  return inputs_;
}

}  // namespace libvarrow::host
