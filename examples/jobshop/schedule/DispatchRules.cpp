#include "schedule/DispatchRules.h"

#include <libvarrow/backtrace/Check.h>

#include <algorithm>

namespace jobshop {

const std::vector<DispatchRule>& dispatchRules() {
  static const std::vector<DispatchRule> rules = {
      {"SPT", "shortest processing time",
       [](const Candidate& c) { return -static_cast<double>(c.duration); }},
      {"LPT", "longest processing time",
       [](const Candidate& c) { return static_cast<double>(c.duration); }},
      {"MWKR", "most work remaining",
       [](const Candidate& c) { return static_cast<double>(c.workRemaining); }},
      {"MOPNR", "most operations remaining",
       [](const Candidate& c) { return static_cast<double>(c.operationsRemaining); }},
      {"FIFO", "first in, first out",
       [](const Candidate& c) { return -static_cast<double>(c.ready); }},
  };
  return rules;
}

std::vector<std::string> dispatchRuleNames() {
  std::vector<std::string> names;
  for (const DispatchRule& rule : dispatchRules()) names.emplace_back(rule.name);
  return names;
}

std::string dispatchRuleMeanings() {
  std::string text;
  for (const DispatchRule& rule : dispatchRules()) {
    text += std::string(text.empty() ? "" : "; ") + rule.name + ": " + rule.meaning;
  }
  return text;
}

const DispatchRule& findDispatchRule(const std::string& name) {
  const auto rule = std::find_if(dispatchRules().begin(), dispatchRules().end(),
                                 [&](const DispatchRule& known) { return name == known.name; });
  LIBVARROW_CHECK(rule != dispatchRules().end());
  return *rule;
}

}  // namespace jobshop
