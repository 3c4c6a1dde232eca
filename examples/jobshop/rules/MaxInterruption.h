// The rule that limits interruptions of operations.
#pragma once

#include "rules/RuleAbout.h"

namespace jobshop {

/// Rule, in JSON {"MaxInterruption": {"limit": 16, "machine": 3}}.
class MaxInterruption : public MachineRule {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  Complaint complaintOf(const MachineParameter& parameter) const override;

  Time limit_ = 0;
};

}  // namespace jobshop
