#include "host/StepPaths.h"

#include <charconv>
#include <utility>

#include "libvarrow/module/pipeline_check.h"

namespace libvarrow::host {

namespace {

const Json::Value* listIn(const Json::Value& object, const char* key) {
  const Json::Value& list = object[key];
  return list.isArray() ? &list : nullptr;
}

}  // namespace

StepPaths::StepPaths(const Json::Value& pipeline) : pipeline_(pipeline), chain_(wholePipeline()) {}

const JsonPath& StepPaths::find(std::string_view step) {
  const std::size_t slash = step.rfind('/');
  const bool isInChain = slash != std::string_view::npos;
  const std::string_view name = isInChain ? step.substr(0, slash) : std::string_view();
  if (name != name_) {
    chain_ = chainOf(name);
    name_ = name;
  }
  path_.assign(chain_.path.begin(), chain_.path.end());
  if (!step.empty()) enterStep(chain_, isInChain ? step.substr(slash + 1) : step, path_);
  return path_;
}

StepPaths::Chain StepPaths::wholePipeline() const {
  const auto layout = pipelineLayout(pipeline_);
  if (!layout) return {};
  if (*layout == PipelineLayout::Named) {
    return {listIn(pipeline_, "chained_module"), &pipeline_["named_modules"]};
  }
  if (*layout == PipelineLayout::Chain) return chainAt(&pipeline_, {});
  JsonPath path = {"mainModule"};
  const Json::Value* const fields = enterModule(pipeline_["mainModule"], path);
  return chainAt(fields, std::move(path));
}

StepPaths::Chain StepPaths::chainOf(std::string_view step) const {
  Chain chain = wholePipeline();
  while (!step.empty()) {
    JsonPath path = chain.path;
    const Json::Value* const fields = enterStep(chain, step, path);
    chain = chainAt(fields, std::move(path));
    const std::size_t slash = step.find('/');
    step = slash == std::string_view::npos ? std::string_view() : step.substr(slash + 1);
  }
  return chain;
}

const Json::Value* StepPaths::enterStep(const Chain& chain, std::string_view step, JsonPath& path) {
  Json::ArrayIndex index = 0;
  std::from_chars(step.data(), step.data() + step.size(), index);
  if (chain.steps == nullptr || index >= chain.steps->size()) return nullptr;
  const Json::Value& entry = (*chain.steps)[index];
  if (chain.modules == nullptr) {
    path.emplace_back("modules");
    path.push_back(indexText(index));
    return enterModule(entry, path);
  }
  if (!entry.isString()) return nullptr;
  path.emplace_back("named_modules");
  path.push_back(entry.asString());
  return enterModule((*chain.modules)[path.back()], path);
}

const Json::Value* StepPaths::enterModule(const Json::Value& module, JsonPath& path) {
  if (!module.isObject() || module.size() != 1) return nullptr;
  const auto member = module.begin();
  path.push_back(member.name());
  return &*member;
}

StepPaths::Chain StepPaths::chainAt(const Json::Value* fields, JsonPath path) {
  const bool mayBeChain = fields != nullptr && fields->isObject();
  return {mayBeChain ? listIn(*fields, "modules") : nullptr, nullptr, std::move(path)};
}

}  // namespace libvarrow::host
