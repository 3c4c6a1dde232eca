// The rule by which jobs are not to lie about.
#pragma once

#include "rules/RuleAbout.h"

namespace jobshop {

/// In JSON: {"MaxWait": {"limit": 20}}.
class MaxWait : public JobRule {
 public:
  /// "limit", required: the longest time between the end of an operation and the start of the next
  /// one of its job; and the keys of JobRule.
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  Complaint complaintOf(const JobParameter& parameter) const override;

  Time limit_ = 0;
};

}  // namespace jobshop
