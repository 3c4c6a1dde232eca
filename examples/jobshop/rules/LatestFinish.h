// The rule that limits the end of jobs.
#pragma once

#include "rules/RuleAbout.h"

namespace jobshop {

/// Rule, in JSON {"LatestFinish": {"limit": 60, "job": 3}}.
class LatestFinish : public JobRule {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields);

 private:
  Complaint complaintOf(const JobParameter& parameter) const override;

  Time limit_ = 0;
};

}  // namespace jobshop
