// The rule by which machines keep some time to spare.
#pragma once

#include "rules/RuleAbout.h"

namespace jobshop {

/// In JSON: {"MachineLoad": {"at_most": 0.8, "machine": 3}}.
class MachineLoad : public MachineRule {
 public:
  /// "at_most", required: the part of its working time, until the whole schedule ends, that a
  /// machine may be busy, from 0 to 1; and the keys of MachineRule.
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  Complaint complaintOf(const MachineParameter& parameter) const override;

  double atMost_ = 0;
};

}  // namespace jobshop
