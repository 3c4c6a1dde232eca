// The rule that limits the waiting times of jobs.
#pragma once

#include "rules/RuleAbout.h"

namespace jobshop {

/// Rule, in JSON {"MaxWait": {"limit": 20}}.
class MaxWait : public JobRule {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  Complaint complaintOf(const JobParameter& parameter) const override;

  Time limit_ = 0;
};

}  // namespace jobshop
