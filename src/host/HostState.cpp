#include "host/HostState.h"

#include <boost/dll/runtime_symbol_info.hpp>
#include <boost/filesystem/operations.hpp>
#include <stdexcept>

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

constexpr std::size_t kOwnClasses = 3;

bool hasMissingClass(const std::vector<FileFaults>& faults) {
  for (const FileFaults& file : faults) {
    for (const cppbind::Fault& fault : file.faults.first) {
      if (fault.message.find("miss register") != std::string::npos) return true;
    }
  }
  return false;
}

}  // namespace

// Absolute, so that a folder of that name in the current directory is not used instead.
fs::path HostState::folderOfPlugins() const {
  if (pluginFolder.empty()) return fs::path();
  return isPluginFolderGiven
             ? fs::absolute(pluginFolder)
             : fs::absolute(pluginFolder, boost::dll::program_location().parent_path());
}

void HostState::loadPlugins() {
  if (plugins != nullptr || pluginFolder.empty()) return;
  const fs::path folder = folderOfPlugins();
  if (isPluginFolderGiven && !fs::is_directory(folder)) {
    throw std::runtime_error("the folder of plug-ins " + folder.generic_string() +
                             " does not exist");
  }
  plugins = std::make_unique<DllManager>();
  plugins->autoLoad(folder.string());
}

bool HostState::hasClasses() const {
  return !pluginFolder.empty() || modules->classes().size() > kOwnClasses || !rules->empty();
}

std::string HostState::missingPlugins(const std::vector<FileFaults>& faults) const {
  const fs::path folder = folderOfPlugins();
  const bool isMissing = !folder.empty() && !fs::is_directory(folder);
  if (!isMissing || !hasMissingClass(faults)) return std::string();
  return "; no plug-ins in " + folder.generic_string();
}

}  // namespace libvarrow::host
