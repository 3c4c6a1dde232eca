// The state of a host, which its commands share.
#pragma once

#include <cppbind/ClassRegister.h>

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "libvarrow/host/Host.h"
#include "libvarrow/utility/DllManager.h"

namespace libvarrow::host {

/// An option that sets a field of the pipeline.
struct Setting {
  std::string name;
  std::string path;
  std::string about;
  bool isFile;
};

struct HostState {
  std::string name;
  std::string about;
  std::string version{};
  std::string moduleRegister;
  std::string ruleRegister;

  // Destroyed after the registers, as their classes may be from plug-ins.
  std::unique_ptr<DllManager> plugins{};
  std::vector<boost::filesystem::path> pluginFiles{};  // that were loaded
  boost::shared_ptr<cppbind::ClassRegister> modules{};
  boost::shared_ptr<cppbind::ClassRegister> rules{};

  std::string pluginFolder = "plugins";
  bool isPluginFolderGiven = false;  // by --plugins: the folder must exist
  std::vector<Setting> settings{};
  std::vector<std::unique_ptr<Command>> commands{};
  std::function<void(const ModuleData&, Summary&)> summary{};
  Host::DataFactory createData{};        // empty: a host without data
  std::vector<std::string> arguments{};  // of the command line, without the program
  std::string lastLine{};                // of standard error, without the program's name

  /// Returns the absolute folder of plug-ins; empty for none.
  boost::filesystem::path folderOfPlugins() const;
  /// Loads the plug-ins once.
  void loadPlugins();
  /// Returns true when the host has classes besides those of the library, or may get some from
  /// plug-ins.
  bool hasClasses() const;
  /// Returns "; no plug-ins in FOLDER" when that folder does not exist and `faults` name an unknown
  /// class, otherwise an empty text.
  std::string missingPlugins(const std::vector<FileFaults>& faults) const;
};

}  // namespace libvarrow::host
