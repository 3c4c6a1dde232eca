#include "host/RunSession.h"

#include <Poco/DigestEngine.h>
#include <Poco/SHA2Engine.h>

#include <algorithm>
#include <array>
#include <boost/filesystem/operations.hpp>
#include <boost/thread/lock_guard.hpp>
#include <fstream>
#include <utility>

#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/module/ModuleData.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;
using Lock = boost::lock_guard<boost::mutex>;

// Returns the SHA-256 of a file; empty when it cannot be read.
std::string checksum(const fs::path& path) {
  std::ifstream file(path.string(), std::ios::binary);
  Poco::SHA2Engine engine(Poco::SHA2Engine::SHA_256);
  std::array<char, 65536> block{};
  while (file.read(block.data(), block.size()) || file.gcount() > 0) {
    engine.update(block.data(), static_cast<std::size_t>(file.gcount()));
  }
  return file.eof() ? Poco::DigestEngine::digestToHex(engine.digest()) : std::string();
}

}  // namespace

RunSession::RunSession(RunPlaces places, const RunOptions& options, bool (*isEndAsked)(),
                       std::string crashLine)
    : places_(std::move(places)),
      options_(options),
      isEndAsked_(isEndAsked),
      crashLine_(std::move(crashLine)) {
  if (!crashLine_.empty()) setCrashLine(crashLine_);
}

RunSession::~RunSession() {
  if (!crashLine_.empty()) setCrashLine(crashLine_);
}

// A step's name is the part of its dump path that the chains append.
std::string RunSession::nameOf(const ModuleData& data) const {
  const std::string& path = data.dumpPath;
  if (path.compare(0, places_.dumps.size(), places_.dumps) != 0) return path;
  const bool endsInSlash = path.size() > places_.dumps.size() && path.back() == '/';
  return path.substr(places_.dumps.size(),
                     path.size() - places_.dumps.size() - (endsInSlash ? 1 : 0));
}

void RunSession::showStep() {
  const std::string step = steps_.empty() ? std::string() : steps_.back();
  if (!crashLine_.empty()) setCrashLine(step.empty() ? crashLine_ : crashLine_ + ": " + step);
  const Lock lock(mutex_);
  shownStep_ = step;
}

void RunSession::stepBegins(Module& step, ModuleData& data) {
  steps_.push_back(nameOf(data));
  showStep();
  if (options_.observer != nullptr) options_.observer->stepBegins(step, data);
}

void RunSession::stepEnds(Module& step, ModuleData& data) {
  lastStep_ = steps_.back();
  if (!options_.until.empty() && lastStep_ == options_.until) isUntilReached_ = true;
  steps_.pop_back();
  showStep();
  if (options_.observer != nullptr) options_.observer->stepEnds(step, data);
}

void RunSession::stepFails(Module& step, ModuleData& data) noexcept {
  if (failedStep_.empty()) failedStep_.swap(steps_.back());
  steps_.pop_back();
  if (options_.observer != nullptr) options_.observer->stepFails(step, data);
}

void RunSession::rulesBroken(const std::string& text) {
  {
    const Lock lock(mutex_);
    brokenRules_.push_back(text);
  }
  if (options_.observer != nullptr) options_.observer->rulesBroken(text);
}

fs::path RunSession::outputPath(const fs::path& path) {
  return fs::absolute(path, places_.folder);
}

fs::path RunSession::inputPath(const fs::path& path) {
  const fs::path file = fs::absolute(path, places_.inputs);
  Json::Value entry(Json::objectValue);
  entry["file"] = file.generic_string();
  const std::string sum = checksum(file);
  if (!sum.empty()) entry["sha256"] = sum;
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
    files_.emplace_back(kind, fs::absolute(path, places_.folder).generic_string());
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

std::vector<std::pair<std::string, std::string>> RunSession::files() const {
  const Lock lock(mutex_);
  return files_;
}

Json::Value RunSession::inputs() const {
  const Lock lock(mutex_);
  return inputs_;
}

}  // namespace libvarrow::host
