// The base of rules that look at jobs.
#pragma once

#include <cstdint>
#include <optional>

#include "rules/ScheduleRule.h"
#include "rules/parameters.h"

namespace jobshop {

class JobRule : public ScheduleRule {
 public:
  /// The keys of ScheduleRule, and "job": the only one to look at; all of them unless given.
  void setBind(cppbind::Binder* binder, bool bindFields);

  void requireFits(const Instance& instance) const override;

 private:
  bool isAbout(const libvarrow::RuleParameter& parameter) const override;
  Complaint complaintAbout(const libvarrow::RuleParameter& parameter) const override;
  virtual Complaint complaintAboutJob(const JobParameter& parameter) const = 0;

  std::optional<std::uint64_t> job_;
};

}  // namespace jobshop
