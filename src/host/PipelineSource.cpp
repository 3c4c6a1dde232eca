#include "host/PipelineSource.h"

#include <cppbind/Description.h>

#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>
#include <map>
#include <tuple>
#include <utility>

#include "base/system_text.h"
#include "host/fault_text.h"
#include "host/file_text.h"
#include "host/overrides.h"
#include "libvarrow/json/json.h"
#include "libvarrow/module/ChainedModule.h"
#include "libvarrow/module/InputFile.h"
#include "libvarrow/module/ModuleLoader.h"
#include "libvarrow/module/pipeline_check.h"
#include "libvarrow/utility/UTFConverter.h"
#include "libvarrow/xrule/rule_check.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;
using cppbind::Fault;
using cppbind::JsonPlaces;

// Returns the offset of a position in a text whose lines end with LF.
std::size_t offsetOf(const std::string& text, const Fault& fault) {
  std::size_t offset = 0;
  for (std::size_t line = 1; line < fault.line; ++line) offset = text.find('\n', offset) + 1;
  for (std::size_t column = 1; column < fault.column && offset < text.size(); ++column) {
    do {
      ++offset;
    } while (offset < text.size() && (static_cast<unsigned char>(text[offset]) & 0xC0U) == 0x80U);
  }
  return offset;
}

bool covers(const std::vector<JsonPath>& set, const JsonPath& path) {
  return std::any_of(set.begin(), set.end(),
                     [&](const JsonPath& setPath) { return beginsWith(path, setPath); });
}

// The members of the changed pipeline are in another order than those of its files.
void sortByPlace(std::vector<Fault>& faults) {
  std::stable_sort(faults.begin(), faults.end(), [](const Fault& left, const Fault& right) {
    return std::tie(left.line, left.column) < std::tie(right.line, right.column);
  });
}

}  // namespace

PipelineSource::PipelineSource(const fs::path& pipeline, const cppbind::ClassRegister& modules) {
  checker_ = read(pipeline, &modules);
}

PipelineSource::PipelineSource(const RunOptions& options, const cppbind::ClassRegister& modules)
    : PipelineSource(options.pipeline, modules) {
  apply(options, modules);
}

const Json::Value& PipelineSource::json() const {
  if (changed_) return *changed_;
  return checker_ == nullptr ? Json::Value::nullSingleton() : checker_->json();
}

std::unique_ptr<cppbind::Checker> PipelineSource::read(const fs::path& file,
                                                       const cppbind::ClassRegister* modules) {
  Origin& origin = origins_.emplace_back(Origin{file.generic_string()});
  std::string text;
  if (const std::string reason = readFile(file, text); !reason.empty()) {
    addFault(origin.name, "cannot be read: " + reason);
    return nullptr;
  }
  auto checker = std::make_unique<cppbind::Checker>(text, modules);
  if (!checker->isJson()) {
    addFaults(origin.name, checker->faults());
    return nullptr;
  }
  origin.places = checker->places();
  return checker;
}

void PipelineSource::addFault(const std::string& origin, const std::string& message) {
  cppbind::Faults faults;
  faults.first.push_back({cppbind::Severity::Error, {}, base::utf8Text(message)});
  faults.errorCount = 1;
  addFaults(origin, std::move(faults));
}

void PipelineSource::addFaults(std::string origin, cppbind::Faults faults) {
  host::addFaults(faults_, {std::move(origin), std::move(faults)});
}

void PipelineSource::apply(const RunOptions& options, const cppbind::ClassRegister& modules) {
  if (checker_ == nullptr || (options.with.empty() && options.set.empty())) return;
  changed_ = checker_->json();
  for (const fs::path& file : options.with) {
    const auto patch = read(file, nullptr);
    if (patch == nullptr) continue;
    origins_.back().set = mergePatch(patch->json(), *changed_);
    origins_.back().warnings = patch->faults();
  }
  if (options.set.empty()) return;
  const cppbind::Description description = cppbind::describe(modules);
  for (const std::string& setting : options.set) {
    const std::string name = "--set " + utility::fromUtf8(setting);
    try {
      origins_.push_back({name, applySetting(setting, description, *changed_)});
      changes_.emplace_back(name, origins_.back().set.size());
    } catch (const std::runtime_error& error) {
      addFault(name, error.what());
    }
  }
}

void PipelineSource::check(const cppbind::ClassRegister& modules,
                           const cppbind::ClassRegister& rules, const fs::path& inputs) {
  if (errorCount(faults_) > 0) return;
  const RuleFileNames ruleFiles;
  if (origins_.size() == 1) {
    addFaults(origins_.front().name, checkPipeline(*checker_));
  } else {
    checkChanged(modules);
  }
  // ModuleLoader also loads modules without a chain: its caller may use them by name.
  const bool isNamed = pipelineLayout(json()) == PipelineLayout::Named;
  if (isNamed && json().get("chained_module", Json::Value()).isNull()) {
    addFault(origins_.front().name, "the pipeline has no chain to run");
  }
  for (const std::string& name : ruleFiles.names()) checkRuleFileNamed(name, rules, inputs);
}

// The check would take the text of a pipe away from the module.
void PipelineSource::checkRuleFileNamed(const std::string& name,
                                        const cppbind::ClassRegister& rules,
                                        const fs::path& inputs) {
  const fs::path file = fs::absolute(utility::pathFromUtf8(name), inputs);
  const fs::file_type type = fs::status(file).type();
  if (type == fs::fifo_file || type == fs::character_file || type == fs::socket_file) {
    return addFault(file.generic_string(), "is read twice, which a pipe or device does not allow");
  }
  addFaults(file.generic_string(), checkRuleFile(file, rules));
}

// Checks the pipeline with all overrides, and assigns each fault to the file or option that set its
// value.
void PipelineSource::checkChanged(const cppbind::ClassRegister& modules) {
  const std::string text = Json2Str(json());
  const JsonPlaces places(text);
  origins_.front().warnings = checker_->faults();
  std::map<std::string, cppbind::Faults> ofOrigin;
  for (const Origin& origin : origins_) ofOrigin.try_emplace(origin.name, origin.warnings);
  cppbind::Faults all = checkPipelineText(text, modules);
  cppbind::Faults* last = nullptr;
  for (Fault& fault : all.first) {
    JsonPath path = fault.path;
    bool isKey = false;
    if (fault.line > 0) {
      const std::size_t offset = offsetOf(text, fault);
      path = places.pathTo(offset);
      isKey = places.find(path).key == offset;
      // A missing member may be one that a merged file removed.
      if (!isKey && path.size() < fault.path.size()) path = fault.path;
    }
    const Origin& origin = originOf(path);
    locate(fault, path, isKey, origin);
    cppbind::Faults& faults = ofOrigin[origin.name];
    const bool isError = fault.severity == cppbind::Severity::Error;
    ++(isError ? faults.errorCount : faults.warningCount);
    --(isError ? all.errorCount : all.warningCount);
    faults.first.push_back(std::move(fault));
    last = &faults;
  }
  if (last != nullptr) {  // Those that are not listed count where the last listed one is.
    last->errorCount += all.errorCount;
    last->warningCount += all.warningCount;
  }
  for (auto& [name, faults] : ofOrigin) sortByPlace(faults.first);
  for (const Origin& origin : origins_) addFaults(origin.name, std::move(ofOrigin[origin.name]));
}

const PipelineSource::Origin& PipelineSource::originOf(const JsonPath& path) const {
  for (auto origin = origins_.rbegin(); origin != origins_.rend(); ++origin) {
    if (covers(origin->set, path)) return *origin;
  }
  return origins_.front();
}

void PipelineSource::locate(Fault& fault, const JsonPath& path, bool isKey,
                            const Origin& origin) const {
  fault.line = fault.column = 0;
  if (!origin.places) return;
  if (!origin.positions) origin.positions.emplace(origin.places->text());
  const JsonPlaces::Place place = origin.places->find(path);
  if (place.depth < path.size() && isKey) return;
  const std::size_t offset = isKey && place.key != JsonPlaces::kNone ? place.key : place.value;
  const auto position = origin.positions->at(offset);
  fault.line = position.line;
  fault.column = position.column;
}

boost::shared_ptr<Module> PipelineSource::load(cppbind::ClassRegister& modules) const {
  const PipelineLayout layout = pipelineLayout(json()).value_or(PipelineLayout::Chain);
  if (layout == PipelineLayout::Chain) {
    cppbind::JsonDecodeBinder binder(&modules);
    ChainedModule::Data4Bind record;
    binder.decode(json(), record);
    return boost::make_shared<ChainedModule>(record);
  }
  ModuleLoader loader;
  if (layout == PipelineLayout::Object) {
    loader.loadJsonV2(json(), &modules);
  } else {
    cppbind::ClassRegister& known = loader.classRegister();
    for (const auto& [key, registered] : modules.classes()) {
      if (known.find(key) == nullptr) known.regClass(registered.name, registered.factory);
    }
    loader.loadJson(json());
  }
  return loader.mainModule();
}

std::string PipelineSource::placeOf(const std::string& step) const {
  if (!stepPaths_) stepPaths_.emplace(json());
  const JsonPath& path = stepPaths_->find(step);
  const Origin& origin = path.empty() ? origins_.front() : originOf(path);
  if (path.empty() || !origin.places) return origins_.front().name;
  Fault fault;
  locate(fault, path, /*isKey=*/true, origin);
  if (fault.line == 0) return origin.name;
  std::string place = origin.name;
  place.append(":").append(std::to_string(fault.line));
  return place.append(":").append(std::to_string(fault.column));
}

}  // namespace libvarrow::host
