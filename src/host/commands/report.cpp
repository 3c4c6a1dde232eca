#include <boost/filesystem/operations.hpp>
#include <ostream>
#include <string>

#include "host/RunReader.h"
#include "host/commands/commands.h"
#include "host/diff/OwnFolders.h"
#include "host/json_string.h"
#include "host/page/write_page.h"
#include "libvarrow/json/json.h"

namespace libvarrow::host {

namespace {

// Returns the files of the record where they are now: the run folder may have been moved since.
RunFiles filesOf(const RunReader& run) {
  const std::string before = textAt(run.record(), "folder");
  const std::string now = jsonString(boost::filesystem::canonical(run.folder())).asString();
  RunFiles files;
  for (const Json::Value& entry : run.record()["files"]) {
    std::string path = textAt(entry, "path");
    const bool isInside = !before.empty() && path.compare(0, before.size() + 1, before + "/") == 0;
    if (isInside) path.replace(0, before.size(), now);
    files.emplace_back(programText(textAt(entry, "kind")), programText(path));
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
    const boost::filesystem::path page = writePage(run.folder(), filesOf(run));
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
