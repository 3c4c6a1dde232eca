#include <map>

#include "host/commands/commands.h"
#include "host/commands/pipeline_options.h"
#include "host/json_string.h"

namespace libvarrow::host {

namespace {

class RunCommand : public Command {
 public:
  explicit RunCommand(HostState& state)
      : Command("run", "runs a pipeline in a new run folder"), state_(state) {}

  void declare(CommandOptions& options) override {
    options.addArgument("PIPELINE", pipeline_, "the pipeline file");
    options.addOption("out", out_, "the run folder, new or empty, in place of runs/TIME_PIPELINE");
    options.addFlag("overwrite", overwrite_, "replaces an earlier run in that folder");
    options.addChoice("dumps", dumps_, {"all", "brief", "none"},
                      "the files of each step; brief: the key figures only");
    options.addOption("until", until_, "ends after this step, such as 1_Plan");
    options.addOption("from", from_,
                      "continues an earlier run with this step, such as RUN/dump/1_Plan");
    changes_.declare(options, state_);
    plugins_.declare(options);
  }

  int run(CommandContext& context) override {
    static const std::map<std::string, DumpLevel> levels = {
        {"all", DumpLevel::All}, {"brief", DumpLevel::Brief}, {"none", DumpLevel::None}};
    plugins_.apply(state_);
    RunOptions options = changes_.runOptions(state_);
    options.pipeline = pipeline_;
    options.folder = out_;
    options.overwrite = overwrite_;
    options.dumps = levels.at(dumps_);
    options.until = jsonString(until_).asString();
    options.from = from_;
    return context.runPipeline(options);
  }

  bool needsData() const override { return true; }

 private:
  HostState& state_;
  std::string pipeline_;
  boost::filesystem::path out_;
  bool overwrite_ = false;
  std::string dumps_ = "all";
  std::string until_;
  boost::filesystem::path from_;
  ChangeOptions changes_;
  PluginOption plugins_;
};

}  // namespace

std::unique_ptr<Command> runCommand(HostState& state) {
  return std::make_unique<RunCommand>(state);
}

}  // namespace libvarrow::host
