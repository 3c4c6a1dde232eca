// The rule that limits the waiting times of jobs.
#pragma once

#include "rules/RuleAbout.h"

namespace jobshop {

/// Rule, in JSON {"MaxWait": {"limit": 20}}.
class MaxWait : public JobRule {
 public:
  /// Binds "limit", required: the longest time between the end of an operation and the start of the
  /// next one of its job; and the keys of JobRule.
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  Complaint complaintOf(const JobParameter& parameter) const override;

  Time limit_ = 0;
};

}  // namespace jobshop
