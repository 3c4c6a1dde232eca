// The rule that limits interruptions of operations.
#pragma once

#include "rules/RuleAbout.h"

namespace jobshop {

/// Rule, in JSON {"MaxInterruption": {"limit": 16, "machine": 3}}.
class MaxInterruption : public MachineRule {
 public:
  /// Binds "limit", required: the longest span without working time inside an operation (0 allows
  /// none); and the keys of MachineRule.
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  Complaint complaintOf(const MachineParameter& parameter) const override;

  Time limit_ = 0;
};

}  // namespace jobshop
