#include "host/Run.h"

#include <boost/filesystem/operations.hpp>
#include <exception>
#include <utility>

#include "base/system_text.h"
#include "host/json_string.h"
#include "host/one_line.h"
#include "host/page/write_page.h"
#include "host/records/configuration.h"
#include "host/run_file_names.h"
#include "host/step_names.h"
#include "host/system.h"
#include "host/without_links.h"
#include "libvarrow/log/log.h"
#include "libvarrow/module/run_files.h"
#include "libvarrow/statistics/TimedStatDumper.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

// RAII guard: sets observer and statistics container of the data, and restores them.
class DataOfRun {
 public:
  DataOfRun(ModuleData& data, RunObserver& observer, StatisticsContainer& statistics)
      : data_(data), observer_(data.observer()), statistics_(data.statisticsContainer) {
    data.setObserver(&observer);
    data.statisticsContainer = &statistics;
  }
  ~DataOfRun() {
    data_.setObserver(observer_);
    data_.statisticsContainer = statistics_;
  }
  DataOfRun(const DataOfRun&) = delete;
  DataOfRun& operator=(const DataOfRun&) = delete;

 private:
  ModuleData& data_;
  RunObserver* const observer_;
  StatisticsContainer* const statistics_;
};

RunPlaces placesOf(const RunFolder& folder, const RunOptions& options) {
  return {folder.path(), inputFolder(options), (folder / "dump").generic_string() + "/"};
}

// The page repeats what the other files have: without it the run has the same outcome.
void tryToWritePage(const fs::path& folder, const RunFiles& files) {
  try {
    writePage(folder, files);
  } catch (const std::exception& error) {
    LIBVARROW_LOG_WARN("%s", error.what());
  }
}

RunSession::PlaceOf placesIn(const PipelineSource& source) {
  return [&](const std::string& step) { return source.placeOf(step); };
}

double secondsOf(std::chrono::nanoseconds time) {
  return std::chrono::duration<double>(time).count();
}

Json::Value listOf(const std::vector<std::string>& texts) {
  Json::Value list(Json::arrayValue);
  for (const std::string& text : texts) list.append(jsonString(text));
  return list;
}

}  // namespace

fs::path inputFolder(const RunOptions& options) {
  return withoutLinks(fs::absolute(
      options.inputs.empty() ? fs::absolute(options.pipeline).parent_path() : options.inputs));
}

Run::Run(const RunOptions& options, const RunContext& context, const PipelineSource& source,
         const ResumePoint& from, const RunFolder& folder, RunRecord& record)
    : options_(options),
      context_(context),
      source_(source),
      from_(from),
      folder_(folder),
      statistics_(context.program),
      session_(placesOf(folder, options), options, context.isEndAsked, placesIn(source),
               context.setsCrashLine ? context.program : std::string(), from.step()),
      record_(record) {}

RunResult Run::process(cppbind::ClassRegister& modules, ModuleData& data) {
  RunResult result;
  result.folder = folder_.path();
  result.faults = source_.faults();
  try {
    session_.openRecords();
    writeWhole(folder_ / kPipelineFile, pipelineText(source_.json()) + '\n');
    const DataOfRun dataOfRun(data, session_, statistics_);
    const TimedStatDumper dumper(&statistics_, (folder_ / kStatisticsFile).string());
    runChain(modules, data, result);
  } catch (const std::exception& error) {
    fail(result, base::systemText(error.what()));
  } catch (...) {
    fail(result, "an exception that is not a std::exception");
  }
  result.brokenRules = session_.brokenRules();
  writeRecords(result);
  return result;
}

void Run::writeRecords(RunResult& result) {
  const auto failUnlessFailed = [&](const std::string& reason) {
    if (result.end != RunResult::End::Failed) fail(result, reason);
  };
  try {
    session_.closeRecords();
  } catch (const std::exception& error) {
    LIBVARROW_LOG_ERROR("%s", error.what());
    failUnlessFailed(error.what());
  }
  try {
    // The dumper removes a file that it could not write completely.
    if (!fs::exists(folder_ / kStatisticsFile)) {
      failUnlessFailed("cannot write " + (folder_ / kStatisticsFile).generic_string() +
                       "; the log has the reason");
    }
    record_.end(result, facts());
  } catch (const std::exception& error) {
    LIBVARROW_LOG_ERROR("%s", error.what());
    failUnlessFailed(error.what());
  }
  tryToWritePage(folder_.path(), session_.files());
}

void Run::runChain(cppbind::ClassRegister& modules, ModuleData& data, RunResult& result) {
  std::string exception;
  bool brokeRules = false;
  bool isEnded = false;
  // The chain may have code of plug-ins, and so may exceptions: both end here.
  const boost::shared_ptr<Module> chain = source_.load(modules);
  requireStep(*chain, options_.until);
  from_.requireStepOf(*chain, options_.until);
  record_.setConfiguration(configurationOf(*chain, source_.json()));
  from_.restore(data);
  data.dumpPath = session_.places().dumps;
  try {
    chain->process(&data);
  } catch (const RulesBroken& error) {
    exception = error.what();
    brokeRules = true;
  } catch (const RunEnded&) {
    isEnded = true;
  } catch (const std::exception& error) {
    exception =
        *error.what() == '\0' ? "an exception without text" : base::systemText(error.what());
  } catch (...) {
    exception = "an exception that is not a std::exception";
  }
  if (brokeRules && session_.brokenRules().empty()) session_.rulesBroken(exception);
  if (brokeRules) exception.clear();
  if (!exception.empty() && !session_.isEndRequested()) dumpAfterFailure(data);
  judge(result, isEnded, exception);
}

// A module may wrap the exception that ends the run: then the request decides.
void Run::judge(RunResult& result, bool isEnded, const std::string& exception) {
  const auto rules = session_.brokenRules();
  const bool isAsked = session_.isEndRequested() && !session_.isUntilReached();
  if ((isEnded || !exception.empty()) && isAsked) {
    result.end = RunResult::End::Ended;
    const std::string& last = session_.lastStep();
    result.error =
        oneLine(source_.placeOf("") + ": ended " + bySignal() +
                (last.empty() ? "before the first step" : "after step " + programText(last)) +
                (exception.empty() ? std::string() : "; " + exception));
  } else if (!exception.empty()) {
    fail(result, exception);
  } else if (isEnded && !session_.isUntilReached()) {
    fail(result, "a step ended the run");
  } else if (!session_.isFromReached()) {
    fail(result, programText("the step " + from_.step() + " did not run"));
  } else if (!options_.until.empty() && !session_.isUntilReached()) {
    fail(result, programText("the step " + options_.until + " did not run"));
  } else if (!rules.empty()) {
    result.end = RunResult::End::RulesBroken;
    result.error =
        oneLine(source_.placeOf("") + ": the plan breaks " + std::to_string(rules.size()) +
                (rules.size() == 1 ? " rule: " : " rules: ") + rules.front());
  } else {
    result.end = RunResult::End::Done;
  }
}

// Returns "by SIGINT " when a signal asked for the end.
std::string Run::bySignal() const {
  if (context_.isEndAsked == nullptr || !context_.isEndAsked()) return std::string();
  return std::string("by ") + system::signalName(system::EndSignals::received()) + " ";
}

void Run::fail(RunResult& result, const std::string& reason) const {
  result.end = RunResult::End::Failed;
  result.step = session_.failedStep();
  const std::string step = result.step.empty() ? std::string() : programText(result.step) + ": ";
  result.error = oneLine(source_.placeOf(result.step) + ": " + step + reason);
}

// Not needed with all dumps, which include the data before the step.
void Run::dumpAfterFailure(ModuleData& data) const {
  if (session_.dumpLevel() == DumpLevel::All) return;
  try {
    const Json::Value info = data.getBaiscInfoJson();
    if (!info.isNull()) CommonStatistics::dumpToFile(data.dumpPath + "failed_info.json", info);
    data.dumpDetailInfo(data.dumpPath + "failed_detail.txt");
    data.dump4Debug(data.dumpPath + "failed/");
  } catch (const std::exception& error) {
    LIBVARROW_LOG_WARN("the data of the failed step is not dumped: %s",
                       base::systemText(error.what()).c_str());
  } catch (...) {
    LIBVARROW_LOG_WARN("the data of the failed step is not dumped");
  }
}

Json::Value Run::facts() const {
  const system::ProcessUse use = system::processUse();
  Json::Value facts(Json::objectValue);
  facts["wall"] = secondsOf(StepRecord::Clock::now() - begin_);
  facts["cpu"] = secondsOf(use.processorTime - useBefore_.processorTime);
  facts["memory"] = Json::UInt64(use.peakMemory);
  facts["rules_broken"] = listOf(session_.brokenRules());
  facts["rules_kept"] = listOf(session_.keptRules());
  if (context_.warnings != nullptr) {
    facts["warnings"] = context_.warnings->list();
    facts["warnings_dropped"] = Json::UInt64(context_.warnings->dropped());
  }
  facts["inputs"] = session_.inputs();
  facts["files"] = Json::Value(Json::arrayValue);
  for (const auto& [kind, path] : session_.files()) {
    Json::Value& entry = facts["files"].append(Json::Value(Json::objectValue));
    entry["kind"] = jsonString(kind);
    entry["path"] = jsonString(path);
  }
  return facts;
}

}  // namespace libvarrow::host
