#include <boost/filesystem/path.hpp>
#include <ostream>
#include <string>

#include "host/RunReader.h"
#include "host/commands/commands.h"
#include "host/json_string.h"
#include "host/page/write_page.h"
#include "libvarrow/json/json.h"

namespace libvarrow::host {

namespace {

RunFiles filesOf(const Json::Value& record) {
  RunFiles files;
  for (const Json::Value& entry : record["files"]) {
    const bool isWhole = entry["kind"].isString() && entry["path"].isString();
    if (!isWhole) continue;
    files.emplace_back(programText(entry["kind"].asString()),
                       programText(entry["path"].asString()));
  }
  return files;
}

class ReportCommand : public Command {
 public:
  ReportCommand() : Command("report", "writes the page of a run, report.html, again") {}

  void declare(CommandOptions& options) override {
    options.addArgument("RUN", run_, "the run folder");
  }

  int run(CommandContext& context) override {
    const RunReader run(run_);
    const boost::filesystem::path page = writePage(run.folder(), filesOf(run.record()));
    if (!context.wantsJson()) {
      context.out() << page.generic_string() << '\n';
      return kDone;
    }
    Json::Value json(Json::objectValue);
    json["page"] = jsonString(page);
    context.out() << Json2Str(json);
    return kDone;
  }

 private:
  std::string run_;
};

}  // namespace

std::unique_ptr<Command> reportCommand() {
  return std::make_unique<ReportCommand>();
}

}  // namespace libvarrow::host
