#include "libvarrow/module/Module.h"

#include <boost/filesystem/operations.hpp>
#include <string_view>

#include "module/observed_step.h"
#include "statistics/statistics_file.h"

namespace libvarrow {

namespace {

// Returns path + name with a single allocation.
std::string joined(const std::string& path, std::string_view name) {
  std::string whole;
  whole.reserve(path.size() + name.size());
  whole.append(path).append(name);
  return whole;
}

void dumpInfo(ModuleData& data, const std::string& path, const char* fileName) {
  const Json::Value info = data.getBaiscInfoJson();
  if (!info.isNull()) CommonStatistics::dumpToFile(joined(path, fileName), info);
}

}  // namespace

Module::Module() : moduleStatistics("") {}

Module::~Module() = default;

std::string Module::getModuleName() {
  return dumpStr();
}

// Only switches on: a module that relies on its dump directory must not lose it because of
// another caller.
void Module::setAutoChangeCurrentDirToDumpPath(bool) {
  autoChangeCurrentDirToDumpPath_ = true;
}

void Module::process(ModuleData* data) {
  ObservedStep step(*this, *data);
  const std::string pathAtEntry = data->dumpPath;
  dumpBefore(*data, pathAtEntry, step.dumpLevel());
  const boost::filesystem::path directoryAtEntry = boost::filesystem::current_path();
  if (autoChangeCurrentDirToDumpPath_) {
    // Dumps create the directory; without them nothing else does.
    if (step.dumpLevel() != DumpLevel::All) boost::filesystem::create_directories(pathAtEntry);
    boost::filesystem::current_path(pathAtEntry);
  }

  StatisticsContainer* const parent = data->statisticsContainer;
  if (parent != nullptr) enterStatistics(*data, *parent);
  processImp(data);
  if (parent != nullptr) {
    data->statisticsContainer->getJsonStatistics("contextOut", data->getBaiscInfoJson());
    data->statisticsContainer = parent;
  }

  if (autoChangeCurrentDirToDumpPath_) boost::filesystem::current_path(directoryAtEntry);
  // Uses the current path, because a module may redirect its output.
  dumpAfter(*data, std::string(data->dumpPath), step.dumpLevel());
  step.end();
}

void Module::dumpBefore(ModuleData& data, const std::string& path, DumpLevel level) const {
  if (level != DumpLevel::None) dumpInfo(data, path, "in_info.json");
  if (level != DumpLevel::All) return;
  data.dumpDetailInfo(joined(path, "in_detail.txt"));
  data.dump4Debug(joined(path, "before_process/"));
}

void Module::dumpAfter(ModuleData& data, const std::string& path, DumpLevel level) const {
  if (level != DumpLevel::None) dumpInfo(data, path, "out_info.json");
  if (level != DumpLevel::All) return;
  data.dumpDetailInfo(joined(path, "out_detail.txt"));
  data.dump4Debug(joined(path, "after_process/"));
  writeStatisticsFile(joined(path, "module_stat.json"), moduleStatistics.toJsonValue4Bind());
}

void Module::enterStatistics(ModuleData& data, StatisticsContainer& parent) {
  data.statisticsContainer = parent.getStatisticsContainer("Module::" + getModuleName());
  // The two time points enclose only the record of the input; the work has separate timers.
  const TimeRecoderHelper timer(data.statisticsContainer->getTimeStatistics("TimeStatistic"));
  data.statisticsContainer->getJsonStatistics("contextIn", data.getBaiscInfoJson());
}

}  // namespace libvarrow
