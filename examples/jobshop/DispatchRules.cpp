#include "DispatchRules.h"

#include <stdexcept>

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

const DispatchRule& findDispatchRule(const std::string& name) {
  std::string names;
  for (const DispatchRule& rule : dispatchRules()) {
    if (name == rule.name) return rule;
    names += names.empty() ? rule.name : std::string(", ") + rule.name;
  }
  throw std::runtime_error("unknown dispatching rule \"" + name + "\"; known are " + names);
}

}  // namespace jobshop
