// The rule by which work is not to stand still for long.
#pragma once

#include "rules/RuleAbout.h"

namespace jobshop {

/// In JSON: {"MaxInterruption": {"limit": 16, "machine": 3}}.
class MaxInterruption : public MachineRule {
 public:
  /// "limit", required: the longest stretch without working time inside an operation; 0 allows
  /// none. And the keys of MachineRule.
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  Complaint complaintOf(const MachineParameter& parameter) const override;

  Time limit_ = 0;
};

}  // namespace jobshop
