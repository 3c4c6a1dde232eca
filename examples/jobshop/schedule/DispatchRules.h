// Dispatching rules: select the next of the operations that wait for a machine.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "problem/Instance.h"

namespace jobshop {

/// The next operation of a job, as a rule sees it.
struct Candidate {
  std::size_t job = 0;
  Time ready = 0;     ///< when the job is ready, even if the machine is busy
  Time duration = 0;  ///< of this operation
  Time workRemaining = 0;
  std::size_t operationsRemaining = 0;
};

struct DispatchRule {
  const char* name = "";
  const char* meaning = "";
  double (*urgency)(const Candidate&) = nullptr;  ///< the largest is scheduled first
};

const std::vector<DispatchRule>& dispatchRules();

std::vector<std::string> dispatchRuleNames();
/// Returns the names and meanings of all rules: "SPT: shortest processing time; LPT: ...".
std::string dispatchRuleMeanings();

/// Returns the rule of that name. Aborts when it is unknown.
const DispatchRule& findDispatchRule(const std::string& name);

}  // namespace jobshop
