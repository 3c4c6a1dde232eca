#include "libvarrow/module/run_files.h"

#include "libvarrow/module/ModuleData.h"
#include "libvarrow/module/RunObserver.h"

namespace libvarrow {

boost::filesystem::path outputPath(const ModuleData& data, const boost::filesystem::path& path) {
  return data.observer() == nullptr ? path : data.observer()->outputPath(path);
}

boost::filesystem::path inputPath(const ModuleData& data, const boost::filesystem::path& path) {
  return data.observer() == nullptr ? path : data.observer()->inputPath(path);
}

void addRunFile(const ModuleData& data, const std::string& kind,
                const boost::filesystem::path& path) {
  if (data.observer() != nullptr) data.observer()->fileWritten(kind, path);
}

void reportRulesBroken(const ModuleData& data, const std::string& text) {
  if (data.observer() != nullptr) data.observer()->rulesBroken(text);
}

void reportRuleKept(const ModuleData& data, const std::string& text) {
  if (data.observer() != nullptr) data.observer()->ruleKept(text);
}

}  // namespace libvarrow
