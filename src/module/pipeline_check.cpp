#include "libvarrow/module/pipeline_check.h"

#include <algorithm>
#include <utility>

#include "base/json_text.h"
#include "base/nearest_name.h"
#include "cppbind/Checker.h"
#include "libvarrow/module/ChainedModule.h"
#include "module/main_module_record.h"

namespace libvarrow {

namespace {

using cppbind::Checker;
using cppbind::Severity;

constexpr const char* kModules = "named_modules";
constexpr const char* kChain = "chained_module";
constexpr const char* kChainOnly = "modules";
constexpr const char* kMainModule = "mainModule";

// Returns the nearest of the keys of `object`.
std::string nearestKey(const std::string& name, const Json::Value& object) {
  if (!object.isObject()) return std::string();
  const Json::Value::Members keys = object.getMemberNames();
  base::NearestName nearest(name);
  for (const std::string& key : keys) nearest.consider(key);
  return std::string(nearest.name());
}

void checkModules(Checker& checker, const Json::Value& modules) {
  if (!modules.isObject()) {
    return checker.add({Severity::Error, {kModules}, "should be a object"});
  }
  for (auto member = modules.begin(); member != modules.end(); ++member) {
    checker.check<boost::shared_ptr<Module>>({kModules, member.name()}, *member);
  }
}

void checkChain(Checker& checker, const Json::Value& chain, const Json::Value& modules) {
  if (!chain.isArray()) return checker.add({Severity::Error, {kChain}, "should be a list"});
  for (Json::ArrayIndex i = 0; i < chain.size(); ++i) {
    const Checker::Path path = {kChain, "[" + std::to_string(i) + "]"};
    if (!chain[i].isString()) {
      checker.add({Severity::Error, path, "should be a string"});
      continue;
    }
    const std::string name = chain[i].asString();
    if (modules.isObject() && modules.isMember(name)) continue;
    checker.add({Severity::Error, path, base::json_text::onOneLine(name) + " is no named module",
                 nearestKey(name, modules)});
  }
}

void checkNamed(Checker& checker) {
  const Json::Value& root = checker.json();
  const Json::Value& modules = root[kModules];
  if (!modules.isNull()) checkModules(checker, modules);
  if (!root[kChain].isNull()) checkChain(checker, root[kChain], modules);
  for (auto member = root.begin(); member != root.end(); ++member) {
    const std::string key = member.name();
    if (key == kModules || key == kChain) continue;
    base::NearestName nearest(key);
    for (const char* known : {kModules, kChain}) {
      if (!root.isMember(known)) nearest.consider(known);
    }
    checker.add({Severity::Warning,
                 {},
                 "unknown json key:[" + key + "] is ignored",
                 std::string(nearest.name())},
                &key);
  }
}

// Returns the key of a layout that `key` probably means; an empty text if there is none.
std::string nearestLayoutKey(const std::string& key) {
  base::NearestName nearest(key);
  for (const char* known : {kChainOnly, kModules, kChain, kMainModule}) nearest.consider(known);
  return std::string(nearest.name());
}

// Adds the unknown keys that probably mean the key of another layout. Such a file is read as a
// chain.
void hintAtLayouts(Checker& checker) {
  for (const std::string& key : checker.json().getMemberNames()) {
    const std::string nearest = nearestLayoutKey(key);
    if (nearest.empty() || nearest == kChainOnly) continue;
    checker.add({Severity::Error, {}, "unknown json key:[" + key + "]", nearest}, &key);
  }
}

}  // namespace

std::optional<PipelineLayout> pipelineLayout(const Json::Value& root) {
  if (!root.isObject()) return std::nullopt;
  if (root.isMember(kChainOnly)) return PipelineLayout::Chain;
  if (root.isMember(kModules) || root.isMember(kChain)) return PipelineLayout::Named;
  if (root.isMember(kMainModule)) return PipelineLayout::Object;
  return std::nullopt;
}

bool resemblesPipeline(const Json::Value& root) {
  if (!root.isObject()) return false;
  const Json::Value::Members keys = root.getMemberNames();
  return std::any_of(keys.begin(), keys.end(),
                     [](const std::string& key) { return !nearestLayoutKey(key).empty(); });
}

cppbind::Faults checkPipeline(Checker& checker, bool ignoreUnknownKeys) {
  if (!checker.isJson()) return checker.faults();
  checker.setAcceptUnknownKeys(ignoreUnknownKeys);
  const std::optional<PipelineLayout> layout = pipelineLayout(checker.json());
  if (!layout && checker.json().isObject() && !ignoreUnknownKeys) hintAtLayouts(checker);
  switch (layout.value_or(PipelineLayout::Chain)) {
    case PipelineLayout::Chain:
      checker.check<ChainedModule::Data4Bind>();
      break;
    case PipelineLayout::Named:
      // Only the executor's layout is read with a choice.
      checker.setAcceptUnknownKeys(false);
      checkNamed(checker);
      break;
    case PipelineLayout::Object:
      checker.setAcceptUnknownKeys(false);
      checker.check<MainModuleRecord>();
      break;
  }
  return checker.faults();
}

cppbind::Faults checkPipelineFile(const boost::filesystem::path& path,
                                  const cppbind::ClassRegisterBase& reg, bool ignoreUnknownKeys) {
  return checkPipeline(*Checker::ofFile(path, &reg), ignoreUnknownKeys);
}

cppbind::Faults checkPipelineText(const std::string& text, const cppbind::ClassRegisterBase& reg,
                                  bool ignoreUnknownKeys) {
  Checker checker(text, &reg);
  return checkPipeline(checker, ignoreUnknownKeys);
}

}  // namespace libvarrow
