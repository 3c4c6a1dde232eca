// The base of rules that check one kind of object: jobs or machines.
#pragma once

#include <cstdint>
#include <optional>

#include "rules/ScheduleRule.h"
#include "rules/parameters.h"

namespace jobshop {

template <class Parameter>
class RuleAbout : public ScheduleRule {
 public:
  /// Binds the keys of ScheduleRule, and the kind ("job" or "machine") for the number of the only
  /// one to check. A derived class calls it first.
  void setBind(cppbind::Binder* binder, bool bindFields);

  void requireFits(const Instance& instance) const override;

 private:
  bool isAbout(const libvarrow::RuleParameter& parameter) const override;
  Complaint complaintAbout(const libvarrow::RuleParameter& parameter) const override;
  virtual Complaint complaintOf(const Parameter& parameter) const = 0;

  std::optional<std::uint64_t> number_;
};

extern template class RuleAbout<JobParameter>;
extern template class RuleAbout<MachineParameter>;

using JobRule = RuleAbout<JobParameter>;
using MachineRule = RuleAbout<MachineParameter>;

}  // namespace jobshop
