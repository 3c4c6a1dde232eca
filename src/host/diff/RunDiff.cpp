#include "host/diff/RunDiff.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/filesystem/operations.hpp>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "base/system_text.h"
#include "host/RunRecord.h"
#include "host/diff/file_diff.h"
#include "host/diff/json_diff.h"
#include "host/diff/origin_diff.h"
#include "host/json_string.h"
#include "host/run_file_names.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

constexpr const char* kDumps = "dump";

// The statistics of a step and of a run contain times.
constexpr const char* kStatisticsOfStep = "module_stat.json";

bool isOfHost(const std::string& name) {
  return isFileOfHost(name) || name == "log" || name == kDumps;
}

// Returns the folder of a step's dumps: a module names it in UTF-8 or in the system's encoding.
fs::path dumpsOf(const RunReader& run, const std::string& step) {
  fs::path folder = run.folder() / kDumps;
  boost::system::error_code ignored;
  std::istringstream names(step);  // not a path: its bytes need not be characters of the system
  for (std::string name; std::getline(names, name, '/');) {
    folder /= fs::exists(folder / name, ignored) ? name : programText(name);
  }
  return folder;
}

// A file may name a step outside the run folder.
bool isInside(const std::string& step) {
  const fs::path path(programText(step));
  return path.is_relative() && std::find(path.begin(), path.end(), "..") == path.end();
}

std::string titleOf(const StepEvent& event) {
  return event.step.empty() ? std::string("run") : event.step;
}

Lines wordsFor(const StepEvent& event) {
  return {(event.isBegin ? "begin of " : "end of ") + shownText(titleOf(event))};
}

double secondsOf(const StepEvent* event) {
  const bool isKnown = event != nullptr && (*event->line)["wall"].isNumeric();
  return isKnown ? (*event->line)["wall"].asDouble() : -1;
}

// Returns the names of a step's dumps in the order in which a reader needs them: key figures,
// details, and all others by name.
std::vector<std::string> inReadingOrder(const std::set<std::string>& names) {
  std::vector<std::string> sorted(names.begin(), names.end());
  const auto rank = [](const std::string& name) {
    if (name == "in_info.json" || name == "out_info.json") return 0;
    return name == "in_detail.txt" || name == "out_detail.txt" ? 1 : 2;
  };
  std::stable_sort(sorted.begin(), sorted.end(),
                   [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
  return sorted;
}

const Json::Value* memberOf(const Json::Value& object, const char* key) {
  return object.isMember(key) ? &object[key] : nullptr;
}

// Adds the files of modules that write statistics, which contain times.
void addStatisticsFiles(const Json::Value& json, std::set<std::string>& files) {
  if (!json.isObject() && !json.isArray()) return;
  for (auto member = json.begin(); member != json.end(); ++member) {
    if (json.isObject() &&
        boost::iequals(member.name(), "CommonModuleStatDumper", std::locale::classic())) {
      const fs::path file = libvarrow::utility::pathFromUtf8(textAt(*member, "file"));
      files.insert(jsonString(file.lexically_normal()).asString());
    }
    addStatisticsFiles(*member, files);
  }
}

// Returns the error without the place in the pipeline file, whose layout and name may differ.
std::string reasonOf(const Json::Value& record) {
  std::string error = textAt(record, "error");
  const std::string step = ": " + textAt(record, "failed_step") + ": ";
  const std::size_t ofStep = error.find(step);
  if (record.isMember("failed_step") && ofStep != std::string::npos) {
    return error.substr(ofStep + step.size());
  }
  const std::string name = jsonString(pathAt(record, "pipeline").filename()).asString();
  const std::size_t ofName = name.empty() ? std::string::npos : error.find(name);
  if (ofName == std::string::npos) return error;
  const std::size_t end = error.find(": ", ofName + name.size());
  return end == std::string::npos ? error : error.substr(end + 2);
}

bool hasEntry(const RunReader& run, const char* name) {
  for (const Json::Value& entry : run.record()["entries"]) {
    if (entry.asString() == name) return true;
  }
  return false;
}

bool isFileName(const std::string& name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos;
}

// Adds the names of the entries that the run itself left in its folder.
void addEntries(const RunReader& run, std::set<std::string>& names) {
  const Json::Value& entries = run.record()["entries"];
  if (entries.empty()) names.merge(namesInBoth({run.folder(), run.folder()}));
  for (const Json::Value& entry : entries) names.insert(programText(entry.asString()));
}

bool isBelow(const fs::path& file, const fs::path& folder) {
  const fs::path relative = file.lexically_relative(folder);
  return !relative.empty() && *relative.begin() != "..";
}

// Returns true for a file of the run folder, which may have been moved since.
bool isOfFolder(const fs::path& file, const RunReader& run) {
  return isBelow(file, fs::canonical(run.folder())) ||
         isBelow(file, pathAt(run.record(), "folder"));
}

// The last event of a run that ended is the end of its pipeline.
std::string reasonOfIncompleteness(const RunReader& run, const StepEvents& events) {
  const std::string name = run.folder().generic_string();
  const std::string outcome = textAt(run.record(), "outcome");
  if (outcome.empty() || outcome == "running") {
    return name + " has not ended: its run is working, or its process died";
  }
  if (!hasEntry(run, kStepsFile)) return std::string();
  if (!fs::exists(run.folder() / kStepsFile)) return name + " has lost its file " + kStepsFile;
  const bool hasBegun = events.hasStep("") || outcome == outcomeText(RunResult::End::Done);
  const bool hasEnded = events.find({"", 0, false, false, nullptr}) != StepEvents::kNone;
  return hasBegun && !hasEnded ? name + " has lost the end of its file " + kStepsFile
                               : std::string();
}

}  // namespace

RunDiff::RunDiff(const RunReader& left, const RunReader& right, DiffReport& report)
    : left_(left),
      right_(right),
      report_(report),
      texts_{OwnFolders(left.folder(), left.record()), OwnFolders(right.folder(), right.record())},
      leftEvents_(left.steps()),
      rightEvents_(right.steps()) {}

void RunDiff::compare() {
  const std::string host = textAt(left_.record(), "host");
  const std::string otherHost = textAt(right_.record(), "host");
  if (host != otherHost) report_.add({"host", Lines{shownText(host)}, Lines{shownText(otherHost)}});
  comparePipelines();
  diffOrigins(left_.record(), right_.record(), report_);
  comparesDumps_ = hasComparableDumps();
  compareSteps();
  compareOutcomes();
  compareWrittenFiles();
  if (report_.wantsAll()) addTimes();
}

std::string RunDiff::incompleteness() const {
  const std::string ofLeft = reasonOfIncompleteness(left_, leftEvents_);
  return ofLeft.empty() ? reasonOfIncompleteness(right_, rightEvents_) : ofLeft;
}

void RunDiff::comparePipelines() {
  const char* const key = "configuration";
  diffJson(memberOf(left_.record(), key), memberOf(right_.record(), key), texts_, "pipeline", {},
           report_);
}

// Returns false, with a note, when the runs wrote different dumps.
bool RunDiff::hasComparableDumps() {
  const std::string ofLeft = textAt(left_.record(), "dumps");
  const std::string ofRight = textAt(right_.record(), "dumps");
  if (ofLeft != ofRight) {
    report_.note("only the key figures of the steps are compared: the dumps are \"" + ofLeft +
                 "\" and \"" + ofRight + "\"");
    return false;
  }
  const bool hasLeft = fs::exists(left_.folder() / kDumps);
  const bool hasRight = fs::exists(right_.folder() / kDumps);
  if (hasLeft != hasRight) {
    const RunReader& without = hasLeft ? right_ : left_;
    report_.note("only the key figures of the steps are compared: " +
                 jsonString(without.folder()).asString() + " has no dumps");
  }
  return hasLeft && hasRight;
}

void RunDiff::compareSteps() {
  std::vector<bool> isCompared(rightEvents_.size());
  std::size_t next = 0;  // the first event of the right run that is not compared
  std::size_t last = StepEvents::kNone;
  const auto addOnlyRight = [&] {
    while (next < rightEvents_.size() &&
           (isCompared[next] || leftEvents_.find(rightEvents_[next]) == StepEvents::kNone)) {
      if (!isCompared[next]) addOnly(rightEvents_[next], /*isLeft=*/false);
      ++next;
    }
  };
  for (std::size_t i = 0; i < leftEvents_.size() && !report_.isEnough(); ++i) {
    const StepEvent& left = leftEvents_[i];
    const std::size_t same = rightEvents_.find(left);
    if (same == StepEvents::kNone) {
      addOnly(left, /*isLeft=*/true);
      continue;
    }
    addOnlyRight();
    if (same != next && same != last + 1) {
      report_.add({"order of the steps", wordsFor(left), wordsFor(rightEvents_[next])});
    }
    compareEvents(left, rightEvents_[same]);
    isCompared[same] = true;
    last = same;
  }
  addOnlyRight();
}

// Adds one difference for a step that only one run has, and one for a step that ended in one run.
void RunDiff::addOnly(const StepEvent& event, bool isLeft) {
  StepEvent begin = event;
  begin.isBegin = true;
  const StepEvents& other = isLeft ? rightEvents_ : leftEvents_;
  if (!event.isBegin && other.find(begin) == StepEvents::kNone) return;
  const Lines words{event.isBegin ? "class " + shownText(textAt(*event.line, "class"))
                                  : shownText(textAt(*event.line, "event"))};
  Difference difference{titleOf(event) + (event.isBegin ? ": step" : ": end"), std::nullopt,
                        std::nullopt};
  (isLeft ? difference.left : difference.right) = words;
  report_.add(std::move(difference));
}

void RunDiff::compareEvents(const StepEvent& left, const StepEvent& right) {
  if (left.isBegin) report_.countStep();
  for (const char* const key : {"class", "event"}) {
    const Json::Value one = textAt(*left.line, key);
    const Json::Value other = textAt(*right.line, key);
    diffJson(&one, &other, texts_, titleOf(left) + ": " + key, {}, report_);
  }
  compareFigures(left, right);
  if (comparesDumps_ && left.isLast && right.isLast) compareDumps(left, right);
}

void RunDiff::compareFigures(const StepEvent& left, const StepEvent& right) {
  const char* const key = left.isBegin ? "before" : "after";
  const Json::Value* const one = memberOf(*left.line, key);
  const Json::Value* const other = memberOf(*right.line, key);
  if (one == nullptr && other == nullptr) return;
  const std::string title = titleOf(left) + ": key figures " + key;
  diffJson(one, other, texts_, title, {}, report_);
}

// At its begin the dumps of the input, at its end all other files of the step.
void RunDiff::compareDumps(const StepEvent& left, const StepEvent& right) {
  if (report_.isEnough() || !isInside(left.step)) return;
  static const std::set<std::string> ofInput = {"in_info.json", "in_detail.txt", "before_process"};
  const ComparedFolders folders{dumpsOf(left_, left.step), dumpsOf(right_, left.step),
                                titleOf(left) + ": "};
  // The key figures of the events have been compared.
  const std::string figures = left.isBegin ? "in_info.json" : "out_info.json";
  const char* const key = left.isBegin ? "before" : "after";
  const bool areFiguresKnown = left.line->isMember(key) && right.line->isMember(key);
  for (const std::string& name : inReadingOrder(namesInBoth(folders))) {
    const std::string inner = (left.step.empty() ? "" : left.step + "/") + base::utf8Text(name);
    const bool isStep = leftEvents_.hasStep(inner) || rightEvents_.hasStep(inner);
    const bool isInput = ofInput.count(name) > 0;
    if (isStep || isInput != left.isBegin || name == kStatisticsOfStep) continue;
    if (areFiguresKnown && name == figures) continue;
    diffEntry(folders, name, texts_, report_);
  }
}

void RunDiff::compareOutcomes() {
  for (const char* const key : {"outcome", "failed_step", "rules_broken", "rules_kept"}) {
    diffJson(memberOf(left_.record(), key), memberOf(right_.record(), key), texts_, key, {},
             report_);
  }
  const Json::Value left = reasonOf(left_.record());
  const Json::Value right = reasonOf(right_.record());
  diffJson(&left, &right, texts_, "error", {}, report_);
}

void RunDiff::compareWrittenFiles() {
  ComparedFolders folders{left_.folder(), right_.folder()};
  addStatisticsFiles(left_.record()["configuration"], folders.skipped);
  std::set<std::string> names;
  addEntries(left_, names);
  addEntries(right_, names);
  for (const std::string& name : names) {
    if (isFileName(name) && !isOfHost(name)) diffEntry(folders, name, texts_, report_);
  }
  compareFilesElsewhere();
}

// Compares the lists of files, and the files of no run folder.
void RunDiff::compareFilesElsewhere() {
  const Json::Value& left = left_.record()["files"];
  const Json::Value& right = right_.record()["files"];
  diffJson(&left, &right, texts_, "files", {}, report_);
  for (Json::ArrayIndex i = 0; i < std::min(left.size(), right.size()); ++i) {
    const fs::path file = pathAt(left[i], "path");
    const fs::path other = pathAt(right[i], "path");
    if (!isOfFolder(file, left_) && !isOfFolder(other, right_)) compareFileElsewhere(file, other);
  }
}

void RunDiff::compareFileElsewhere(const fs::path& left, const fs::path& right) {
  if (report_.isEnough()) return;
  const std::string name = jsonString(left).asString();
  if (left == right) {
    report_.note(name + " is not compared: both runs wrote it");
  } else if (!fs::is_regular_file(left) || !fs::is_regular_file(right)) {
    report_.note(name + " and " + jsonString(right).asString() +
                 " are not compared: a file is missing");
  } else if (auto difference = fileDifference(left, right, texts_)) {
    difference->place = name + difference->place;
    report_.add(std::move(*difference));
  }
}

// Times of steps that ended in both runs or in one of them.
void RunDiff::addTimes() {
  for (std::size_t i = 0; i < leftEvents_.size(); ++i) {
    const StepEvent& left = leftEvents_[i];
    if (left.isBegin) continue;
    const std::size_t same = rightEvents_.find(left);
    const StepEvent* const right = same == StepEvents::kNone ? nullptr : &rightEvents_[same];
    report_.add(StepTimes{titleOf(left), secondsOf(&left), secondsOf(right)});
  }
  for (std::size_t i = 0; i < rightEvents_.size(); ++i) {
    const StepEvent& right = rightEvents_[i];
    if (right.isBegin || leftEvents_.find(right) != StepEvents::kNone) continue;
    report_.add(StepTimes{titleOf(right), -1, secondsOf(&right)});
  }
}

}  // namespace libvarrow::host
