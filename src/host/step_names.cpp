#include "host/step_names.h"

#include <algorithm>
#include <boost/shared_ptr.hpp>
#include <stdexcept>
#include <vector>

#include "base/folder_name.h"
#include "base/nearest_name.h"
#include "base/system_text.h"
#include "host/json_string.h"
#include "libvarrow/module/ChainedModule.h"
#include "libvarrow/module/ChainedModuleV2.h"

namespace libvarrow::host {

namespace {

const std::vector<boost::shared_ptr<Module>>* stepsOf(const Module& module) {
  if (const auto* chain = dynamic_cast<const ChainedModule*>(&module)) {
    return &chain->getData4Bind().modules;
  }
  const auto* chain = dynamic_cast<const ChainedModuleV2*>(&module);
  return chain == nullptr ? nullptr : &chain->getModules();
}

// Adds the names of all steps, or returns true when `step` is inside a module whose steps are not
// known.
bool collect(const Module& chain, const std::string& prefix, const std::string& step,
             std::vector<std::string>& names) {
  const auto* const steps = stepsOf(chain);
  if (steps == nullptr) return !prefix.empty() && step.compare(0, prefix.size(), prefix) == 0;
  for (std::size_t i = 0; i < steps->size(); ++i) {
    names.push_back(prefix + std::to_string(i) + "_" +
                    base::utf8Text(base::folderName((*steps)[i]->getModuleName())));
    if (collect(*(*steps)[i], names.back() + "/", step, names)) return true;
  }
  return false;
}

// Continues an error about an unknown step.
std::string alternatives(const std::string& step, const std::vector<std::string>& names) {
  constexpr std::size_t kMostListed = 12;
  base::NearestName nearest(step);
  for (const std::string& name : names) nearest.consider(name);
  if (!nearest.name().empty()) return base::suggestion(nearest.name());
  std::string list;
  for (std::size_t i = 0; i < names.size() && i < kMostListed; ++i) {
    list += (i == 0 ? "; it has " : ", ") + names[i];
  }
  return names.size() > kMostListed ? list + ", ..." : list;
}

}  // namespace

void requireStep(const Module& chain, const std::string& step) {
  std::vector<std::string> names;
  if (step.empty() || collect(chain, "", step, names)) return;
  if (std::find(names.begin(), names.end(), step) != names.end()) return;
  throw std::runtime_error(
      programText("the pipeline has no step \"" + step + "\"" + alternatives(step, names)));
}

// A chain is listed before its steps, and ends after them.
bool isBefore(const Module& chain, const std::string& step, const std::string& other) {
  std::vector<std::string> names;
  collect(chain, "", other, names);
  const auto at = std::find(names.begin(), names.end(), step);
  const auto otherAt = std::find(at, names.end(), other);
  const bool isAround = other.compare(0, step.size() + 1, step + "/") == 0;
  return at != otherAt && otherAt != names.end() && !isAround;
}

}  // namespace libvarrow::host
