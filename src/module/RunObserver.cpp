#include "libvarrow/module/RunObserver.h"

#include "libvarrow/module/ModuleData.h"

namespace libvarrow {

RunObserver::~RunObserver() = default;

void RunObserver::stepBegins(Module&, ModuleData&) {}

void RunObserver::stepEnds(Module&, ModuleData&) {}

void RunObserver::stepFails(Module&, ModuleData&) noexcept {}

void RunObserver::rulesBroken(const std::string&) {}

boost::filesystem::path RunObserver::outputPath(const boost::filesystem::path& path) {
  return path;
}

boost::filesystem::path RunObserver::inputPath(const boost::filesystem::path& path) {
  return path;
}

void RunObserver::fileWritten(const std::string&, const boost::filesystem::path&) {}

DumpLevel RunObserver::dumpLevel() const {
  return DumpLevel::All;
}

bool RunObserver::isEndRequested() const noexcept {
  return false;
}

void RunObserver::ruleKept(const std::string&) {}

void RunObserver::spanEnds(const std::string&, std::chrono::steady_clock::time_point,
                           std::chrono::steady_clock::time_point) noexcept {}

bool RunObserver::skipsStep(Module&, const ModuleData&) {
  return false;
}

bool isEndRequested(const ModuleData& data) noexcept {
  const RunObserver* const observer = data.observer();
  return observer != nullptr && observer->isEndRequested();
}

void throwIfEndRequested(const ModuleData& data) {
  if (isEndRequested(data)) throw RunEnded("the run was ended on request");
}

}  // namespace libvarrow
