#include <cppbind/Checker.h>
#include <json/value.h>

#include <algorithm>
#include <ostream>
#include <utility>

#include "host/PipelineSource.h"
#include "host/Run.h"
#include "host/commands/commands.h"
#include "host/commands/pipeline_options.h"
#include "host/fault_text.h"
#include "host/json_string.h"
#include "libvarrow/json/json.h"
#include "libvarrow/module/pipeline_check.h"
#include "libvarrow/xrule/rule_check.h"

namespace libvarrow::host {

namespace {

Json::Value jsonOf(const std::string& origin, const cppbind::Fault& fault) {
  Json::Value json(Json::objectValue);
  json["file"] = jsonString(origin);
  json["line"] = static_cast<Json::UInt64>(fault.line);
  json["column"] = static_cast<Json::UInt64>(fault.column);
  json["severity"] = fault.severity == cppbind::Severity::Error ? "error" : "warning";
  json["path"] = pathText(fault.path);
  json["message"] = fault.message;
  if (!fault.hint.empty()) json["hint"] = fault.hint;
  return json;
}

class CheckCommand : public Command {
 public:
  explicit CheckCommand(HostState& state)
      : Command("check", "prints every fault of pipeline and rule files"), state_(state) {}

  void declare(CommandOptions& options) override {
    options.addArguments("FILE", files_, 1, "pipeline files, with their rule files, or rule files");
    changes_.declare(options, state_);
    plugins_.declare(options);
  }

  int run(CommandContext& context) override {
    plugins_.apply(state_);
    state_.loadPlugins();
    std::vector<FileFaults> faults;
    for (const std::string& file : files_) {
      for (FileFaults& found : faultsOf(file)) addFaults(faults, std::move(found));
    }
    const std::string option = changes_.firstGiven(state_);
    if (!option.empty() && ruleFileCount_ == files_.size()) {
      throw UsageError(option + " is for pipelines: " + files_.front() + " is a rule file");
    }
    if (context.wantsJson()) {
      printJson(faults, context.out());
    } else {
      for (const FileFaults& file : faults) {
        for (const std::string& line : faultLines(file)) context.out() << line << '\n';
      }
    }
    const std::size_t count = errorCount(faults);
    if (count == 0) return kDone;
    state_.lastLine = firstError(faults) + state_.missingPlugins(faults);
    return kFailed;
  }

  bool needsClasses() const override { return true; }

 private:
  // Returns true for files that are checked as pipelines. Others are rule files. The name of a rule
  // may resemble a key of pipelines.
  bool isPipeline(const Json::Value& json) const {
    if (pipelineLayout(json)) return true;
    if (!resemblesPipeline(json)) return false;
    const Json::Value::Members keys = json.getMemberNames();
    return std::none_of(keys.begin(), keys.end(), [this](const std::string& key) {
      return state_.rules->find(key) != nullptr;
    });
  }

  std::vector<FileFaults> faultsOf(const std::string& file) {
    RunOptions options = changes_.runOptions(state_);
    options.pipeline = file;
    PipelineSource source(options.pipeline, *state_.modules);
    if (errorCount(source.faults()) > 0) return source.faults();
    if (!isPipeline(source.json())) {
      ++ruleFileCount_;
      return {{options.pipeline.generic_string(), checkRuleText(source.text(), *state_.rules)}};
    }
    source.apply(options, *state_.modules);
    source.check(*state_.modules, *state_.rules, inputFolder(options));
    return source.faults();
  }

  static void printJson(const std::vector<FileFaults>& faults, std::ostream& out) {
    Json::Value list(Json::arrayValue);
    for (const FileFaults& file : faults) {
      for (const cppbind::Fault& fault : file.faults.first) {
        list.append(jsonOf(file.origin, fault));
      }
    }
    out << Json2Str(list);
  }

  HostState& state_;
  std::vector<std::string> files_;
  std::size_t ruleFileCount_ = 0;
  ChangeOptions changes_;
  PluginOption plugins_;
};

}  // namespace

std::unique_ptr<Command> checkCommand(HostState& state) {
  return std::make_unique<CheckCommand>(state);
}

}  // namespace libvarrow::host
