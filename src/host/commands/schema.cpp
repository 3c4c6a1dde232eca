#include <cppbind/JsonSchema.h>

#include <ostream>

#include "host/commands/commands.h"
#include "host/commands/pipeline_options.h"
#include "libvarrow/module/pipeline_schema.h"
#include "libvarrow/xrule/rule_file_schema.h"

namespace libvarrow::host {

namespace {

class SchemaCommand : public Command {
 public:
  explicit SchemaCommand(HostState& state)
      : Command("schema", "prints the JSON Schema of pipeline files, for editors"), state_(state) {}

  void declare(CommandOptions& options) override {
    options.addFlag("rules", ofRules_, "prints that of rule files");
    plugins_.declare(options);
  }

  int run(CommandContext& context) override {
    plugins_.apply(state_);
    state_.loadPlugins();
    context.out() << cppbind::schemaText(ofRules_ ? ruleFileSchema(*state_.rules)
                                                  : pipelineSchema(*state_.modules));
    return kDone;
  }

  bool needsClasses() const override { return true; }

 private:
  HostState& state_;
  bool ofRules_ = false;
  PluginOption plugins_;
};

}  // namespace

std::unique_ptr<Command> schemaCommand(HostState& state) {
  return std::make_unique<SchemaCommand>(state);
}

}  // namespace libvarrow::host
