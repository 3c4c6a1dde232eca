#include "host/HostState.h"

#include <algorithm>
#include <boost/dll/runtime_symbol_info.hpp>
#include <boost/dll/shared_library.hpp>
#include <boost/filesystem/operations.hpp>
#include <stdexcept>
#include <utility>

#include "base/system_text.h"
namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

constexpr std::size_t kOwnClasses = 3;

// Returns the files that DllManager::autoLoad() loads, sorted: the order is that of every run.
std::vector<fs::path> pluginsIn(const fs::path& folder) {
  std::vector<fs::path> files;
  if (!fs::is_directory(folder)) return files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == boost::dll::shared_library::suffix()) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

// Names the file, which an exception of the plug-in itself does not.
void loadPlugin(DllManager& plugins, const fs::path& file) {
  const std::string name = "plug-in " + file.generic_string() + ": ";
  try {
    plugins.findOrCreateDll(file.stem().string(), file.parent_path().string());
  } catch (const std::exception& error) {
    const std::string reason = base::systemText(error.what());
    const bool isNamed = reason.find(file.generic_string()) != std::string::npos;
    throw std::runtime_error(isNamed ? reason : name + reason);
  } catch (...) {
    throw std::runtime_error(name + "an exception that is not a std::exception");
  }
}

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
  auto loaded = std::make_unique<DllManager>();
  std::vector<fs::path> files = pluginsIn(folder);
  for (const fs::path& file : files) loadPlugin(*loaded, file);
  plugins = std::move(loaded);
  pluginFiles = std::move(files);
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
