#include "host/RunSession.h"

#include <Poco/DigestEngine.h>
#include <Poco/SHA2Engine.h>

#include <algorithm>
#include <array>
#include <boost/filesystem/operations.hpp>
#include <boost/thread/lock_guard.hpp>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "host/json_string.h"
#include "host/page/write_page.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/log/log.h"
#include "libvarrow/module/ModuleData.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;
using Lock = boost::lock_guard<boost::mutex>;

// Returns the SHA-256 of a file; empty when it cannot be read, and for pipes, which can be read
// once.
std::string checksum(const fs::path& path) {
  boost::system::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) return std::string();
  std::ifstream file(path.string(), std::ios::binary);
  Poco::SHA2Engine engine(Poco::SHA2Engine::SHA_256);
  std::array<char, 65536> block{};
  while (file.read(block.data(), block.size()) || file.gcount() > 0) {
    engine.update(block.data(), static_cast<std::size_t>(file.gcount()));
  }
  return file.eof() ? Poco::DigestEngine::digestToHex(engine.digest()) : std::string();
}

bool isOfHost(const std::string& name) {
  return name == "run.json" || name == "run.lock" || name == "pipeline.json" ||
         name == "statistics.json" || name == kPageFile;
}

}  // namespace

RunSession::RunSession(RunPlaces places, const RunOptions& options, bool (*isEndAsked)(),
                       CrashLineOf crashLineOf)
    : places_(std::move(places)),
      options_(options),
      isEndAsked_(isEndAsked),
      crashLineOf_(std::move(crashLineOf)) {
  showStep();
}

RunSession::~RunSession() = default;

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
  if (crashLineOf_) setCrashLine(crashLineOf_(step));
  const Lock lock(mutex_);
  shownStep_ = step;
}

void RunSession::stepBegins(Module& step, ModuleData& data) {
  failedStep_.clear();  // handled by its chain
  steps_.push_back(nameOf(data));
  showStep();
  if (options_.observer != nullptr) options_.observer->stepBegins(step, data);
}

void RunSession::stepEnds(Module& step, ModuleData& data) {
  failedStep_.clear();
  lastStep_ = steps_.back();
  if (!options_.until.empty() && lastStep_ == options_.until) isUntilReached_ = true;
  steps_.pop_back();
  showStep();
  if (options_.observer != nullptr) options_.observer->stepEnds(step, data);
}

void RunSession::stepFails(Module& step, ModuleData& data) noexcept {
  if (failedStep_.empty()) failedStep_ = std::move(steps_.back());
  steps_.pop_back();
  try {
    showStep();  // of the chain, which may go on
  } catch (const std::exception&) {
    // The step shown is the one that failed.
  }
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
  const fs::path file = fs::absolute(path, places_.folder).lexically_normal();
  if (file.parent_path() == places_.folder && isOfHost(file.filename().string())) {
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
