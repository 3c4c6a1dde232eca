#include <ostream>
#include <stdexcept>

#include "host/commands/commands.h"
#include "host/commands/diff_result.h"
#include "host/diff/RunDiff.h"
#include "host/json_string.h"
#include "libvarrow/json/json.h"

namespace libvarrow::host {

int tellDifferences(const RunReader& left, const RunReader& right, bool all,
                    const CommandContext& context) {
  DiffReport report(all);
  RunDiff diff(left, right, report);
  diff.compare();
  const std::string leftName = jsonString(left.folder()).asString();
  const std::string rightName = jsonString(right.folder()).asString();
  if (context.wantsJson()) {
    context.out() << Json2Str(report.json(leftName, rightName));
  } else {
    context.out() << programText(report.text(leftName, rightName));
  }
  const std::string reason = diff.incompleteness();
  if (!reason.empty()) throw std::runtime_error(reason);
  return report.isSame() ? kSameRuns : kOtherRuns;
}

namespace {

class DiffCommand : public Command {
 public:
  DiffCommand() : Command("diff", "prints the first difference of two runs") {}

  void declare(CommandOptions& options) override {
    options.addArgument("RUN", left_, "a run folder");
    options.addArgument("OTHER_RUN", right_, "the run folder to compare it with");
    options.addFlag("all", all_, "prints all differences, and the time of each step in both runs");
  }

  int run(CommandContext& context) override {
    return tellDifferences(RunReader(left_), RunReader(right_), all_, context);
  }

  int failureStatus() const override { return kNotCompared; }

 private:
  std::string left_;
  std::string right_;
  bool all_ = false;
};

}  // namespace

std::unique_ptr<Command> diffCommand() {
  return std::make_unique<DiffCommand>();
}

}  // namespace libvarrow::host
