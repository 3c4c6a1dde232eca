// The rule that limits the load of machines.
#pragma once

#include "rules/RuleAbout.h"

namespace jobshop {

/// Rule, in JSON {"MachineLoad": {"at_most": 0.8, "machine": 3}}.
class MachineLoad : public MachineRule {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  Complaint complaintOf(const MachineParameter& parameter) const override;

  double atMost_ = 0;
};

}  // namespace jobshop
