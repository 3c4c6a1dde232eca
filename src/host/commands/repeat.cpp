#include <boost/filesystem/operations.hpp>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "host/PipelineSource.h"
#include "host/Run.h"
#include "host/RunFolder.h"
#include "host/RunRecord.h"
#include "host/checksum.h"
#include "host/commands/commands.h"
#include "host/commands/diff_result.h"
#include "host/commands/pipeline_options.h"
#include "host/diff/OwnFolders.h"
#include "host/diff/origin_diff.h"
#include "host/fault_text.h"
#include "host/json_string.h"
#include "host/one_line.h"
#include "host/run_facts.h"
#include "host/run_file_names.h"
#include "host/system.h"
#include "host/without_links.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

DumpLevel dumpLevelOf(const Json::Value& record) {
  const std::string text = textAt(record, "dumps");
  for (const DumpLevel level : {DumpLevel::Brief, DumpLevel::None}) {
    if (text == dumpLevelText(level)) return level;
  }
  return DumpLevel::All;
}

// Returns the input files of the record as they are now, without those that are missing. Files of
// the recorded folder of inputs are searched in `folder`.
Json::Value inputsNow(const Json::Value& record, const fs::path& folder) {
  Json::Value list(Json::arrayValue);
  for (const Json::Value& input : record["inputs"]) {
    fs::path file = pathAt(input, "file");
    const fs::path inside = file.lexically_relative(pathAt(record, "folder_of_inputs"));
    if (!inside.empty() && *inside.begin() != "..") file = folder / inside;
    if (!fs::exists(file)) continue;
    Json::Value& entry = list.append(Json::Value(Json::objectValue));
    entry["file"] = jsonString(file);
    entry["sha256"] = checksum(file);
  }
  return list;
}

Lines linesOf(const DiffReport& changes) {
  Lines lines;
  for (const Difference& change : changes.differences()) {
    const char* const kind = !change.left    ? " is new"
                             : !change.right ? " is missing"
                                             : " has changed";
    lines.push_back(oneLine(programText(change.place) + kind));
  }
  for (const std::string& note : changes.notes()) lines.push_back(oneLine(programText(note)));
  return lines;
}

class RepeatCommand : public Command {
 public:
  explicit RepeatCommand(HostState& state)
      : Command("repeat", "runs the pipeline of a run again and compares the two runs"),
        state_(state) {}

  void declare(CommandOptions& options) override {
    options.addArgument("RUN", run_, "a run folder");
    options.addOption("out", out_, "the new run folder, in place of runs/TIME_PIPELINE");
    options.addOption("inputs", inputs_, "the folder of input files, in place of the recorded one");
    options.addFlag("anyway", anyway_, "also when input files, plug-ins or the program changed");
    options.addFlag("all", all_, "prints all differences, and the time of each step in both runs");
    plugins_.declare(options);
  }

  int run(CommandContext& context) override {
    const RunReader recorded(run_);
    if (!out_.empty() && RunRecord::isIn(out_)) {
      throw UsageError(out_.generic_string() + " has an earlier run; name another folder");
    }
    RunOptions options = optionsOf(recorded);
    // Not from the recorded folder: a run folder must not decide which code is loaded.
    plugins_.apply(state_);
    state_.loadPlugins();
    requireUnchanged(recorded.record(), options);
    requireFaultless(options);
    if (options.folder.empty()) {
      const fs::path pipeline = pathAt(recorded.record(), "pipeline");
      options.folder = newRunFolder(fs::absolute("runs"), pipeline);
    }
    std::ostringstream summary;
    context.runPipeline(options, summary);
    if (system::EndSignals::received() != 0) return kNotCompared;
    const RunReader repeated(options.folder);
    state_.lastLine.clear();  // the recorded run may have failed in the same way
    if (!context.wantsJson()) {
      context.out() << "run folder  " << oneLine(options.folder.generic_string()) << '\n';
    }
    return tellDifferences(recorded, repeated, all_, context);
  }

  int failureStatus() const override { return kNotCompared; }
  bool needsData() const override { return true; }

 private:
  RunOptions optionsOf(const RunReader& recorded) const {
    const Json::Value& record = recorded.record();
    const std::string host = textAt(record, "host");
    if (host != state_.name) {
      throw std::runtime_error(run_ + " is a run of the program \"" + host + "\"");
    }
    RunOptions options;
    options.pipeline = recorded.folder() / kPipelineFile;
    options.folder = out_;
    options.inputs = inputs_.empty() ? pathAt(record, "folder_of_inputs") : withoutLinks(inputs_);
    options.dumps = dumpLevelOf(record);
    options.until = textAt(record, "until");
    options.from = pathAt(record, "from");
    return options;
  }

  // Tells each change and refuses changed runs, since their differences would prove nothing.
  void requireUnchanged(const Json::Value& record, const RunOptions& options) const {
    Json::Value now = runFacts(options, state_);
    now["inputs"] = inputsNow(record, options.inputs);
    DiffReport changes(/*all=*/true);
    diffOrigins(record, now, changes);
    const Lines lines = linesOf(changes);
    for (const std::string& line : lines) system::writeError(line + '\n');
    if (!lines.empty() && !anyway_) {
      throw std::runtime_error("not repeated: " + lines.front() + "; --anyway repeats it");
    }
  }

  // Before a folder is made.
  void requireFaultless(const RunOptions& options) const {
    PipelineSource source(options, *state_.modules);
    source.check(*state_.modules, *state_.rules, options.inputs);
    if (errorCount(source.faults()) > 0) throw std::runtime_error(firstError(source.faults()));
  }

  HostState& state_;
  std::string run_;
  fs::path out_;
  fs::path inputs_;
  bool anyway_ = false;
  bool all_ = false;
  PluginOption plugins_;
};

}  // namespace

std::unique_ptr<Command> repeatCommand(HostState& state) {
  return std::make_unique<RepeatCommand>(state);
}

}  // namespace libvarrow::host
