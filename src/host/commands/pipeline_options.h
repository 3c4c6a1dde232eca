// The options of commands that read a pipeline.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>
#include <vector>

#include "host/HostState.h"

namespace libvarrow::host {

/// Option --plugins.
class PluginOption {
 public:
  void declare(CommandOptions& options);
  /// Makes `state` use the folder, if one was given.
  void apply(HostState& state) const;

 private:
  boost::filesystem::path folder_;
};

/// Options that change the pipeline: --with, --set, --inputs and the settings of the host.
class ChangeOptions {
 public:
  void declare(CommandOptions& options, const HostState& state);
  /// Returns the options of a run with these changes.
  RunOptions runOptions(const HostState& state) const;
  /// Returns the first of these options that is given, such as "--set"; empty: none.
  std::string firstGiven(const HostState& state) const;

 private:
  std::vector<std::string> with_;
  std::vector<std::string> set_;
  boost::filesystem::path inputs_;
  std::vector<std::vector<std::string>> values_;  // of the host's settings; the last counts
};

}  // namespace libvarrow::host
