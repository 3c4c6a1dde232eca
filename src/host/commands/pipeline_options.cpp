#include "host/commands/pipeline_options.h"

#include <boost/filesystem/operations.hpp>
#include <set>
#include <stdexcept>
#include <utility>

#include "host/commands/commands.h"
#include "host/json_string.h"
#include "libvarrow/json/json.h"

namespace libvarrow::host {

namespace {

// Quoted, so that no character of the file name has a meaning.
std::string quoted(const std::string& file) {
  std::string text = Json2Str(jsonString(boost::filesystem::absolute(file)));
  text.pop_back();  // the line end
  return text;
}

}  // namespace

void addSetting(Setting setting, HostState& state) {
  static const std::set<std::string> own = {"out",     "overwrite", "with",  "set",
                                            "plugins", "inputs",    "dumps", "until",
                                            "from",    "help",      "json"};
  bool isTaken = own.count(setting.name) > 0;
  for (const Setting& known : state.settings) isTaken |= known.name == setting.name;
  if (isTaken) throw std::logic_error("the option --" + setting.name + " exists");
  state.settings.push_back(std::move(setting));
}

void PluginOption::declare(CommandOptions& options) {
  options.addOption("plugins", folder_, "the folder of plug-ins, in place of the program's");
}

void PluginOption::apply(HostState& state) const {
  if (folder_.empty()) return;
  state.pluginFolder = folder_.string();
  state.isPluginFolderGiven = true;
}

void ChangeOptions::declare(CommandOptions& options, const HostState& state) {
  options.addOption("with", with_, "merges a JSON file into the pipeline; may be repeated");
  options.addOption("set", set_,
                    "sets a field after that, PATH=VALUE, such as modules[2].Plan.tries=5, or "
                    "Plan.tries=5 in every Plan; may be repeated");
  options.addOption("inputs", inputs_,
                    "the folder of input files, in place of the pipeline file's");
  values_.resize(state.settings.size());
  for (std::size_t i = 0; i < values_.size(); ++i) {
    const Setting& setting = state.settings[i];
    options.addOption(setting.name, values_[i], setting.about + (setting.isFile ? ", a file" : ""));
  }
}

std::string ChangeOptions::firstGiven(const HostState& state) const {
  if (!with_.empty()) return "--with";
  if (!set_.empty()) return "--set";
  if (!inputs_.empty()) return "--inputs";
  for (std::size_t i = 0; i < values_.size(); ++i) {
    if (!values_[i].empty()) return "--" + state.settings[i].name;
  }
  return std::string();
}

RunOptions ChangeOptions::runOptions(const HostState& state) const {
  RunOptions options;
  options.with.assign(with_.begin(), with_.end());
  for (std::size_t i = 0; i < values_.size(); ++i) {
    if (values_[i].empty()) continue;
    const Setting& setting = state.settings[i];
    const std::string& value = values_[i].back();
    if (setting.isFile && value.empty()) throw UsageError("--" + setting.name + " needs a file");
    const std::string text = setting.isFile ? quoted(value) : jsonString(value).asString();
    options.set.push_back(setting.path + "=" + text);
  }
  for (const std::string& setting : set_) {
    if (setting.find('=') == std::string::npos) {
      throw UsageError("--set " + setting + " is not PATH=VALUE");
    }
    options.set.push_back(jsonString(setting).asString());
  }
  options.inputs = inputs_;
  return options;
}

}  // namespace libvarrow::host
