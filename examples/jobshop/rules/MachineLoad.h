// The rule that limits the load of machines.
#pragma once

#include "rules/RuleAbout.h"

namespace jobshop {

/// Rule, in JSON {"MachineLoad": {"at_most": 0.8, "machine": 3}}.
class MachineLoad : public MachineRule {
 public:
  /// Binds "at_most", required: the largest part, from 0 to 1, of its working time until the end of
  /// the whole schedule that a machine may be busy; and the keys of MachineRule.
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  Complaint complaintOf(const MachineParameter& parameter) const override;

  double atMost_ = 0;
};

}  // namespace jobshop
