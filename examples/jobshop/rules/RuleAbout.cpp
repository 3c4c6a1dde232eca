#include "rules/RuleAbout.h"

#include <stdexcept>
#include <string>

namespace jobshop {

template <class Parameter>
void RuleAbout<Parameter>::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  ScheduleRule::setBind(binder, bindFields);
  binder->field(Parameter::kKind, number_).about("The only one to check; by default all.");
}

template <class Parameter>
void RuleAbout<Parameter>::requireFits(const Instance& instance) const {
  const std::size_t count = Parameter::countIn(instance);
  if (!number_ || *number_ < count) return;
  throw std::runtime_error(dumpStr() + ": unknown " + Parameter::kKind + " " +
                           std::to_string(*number_) + "; the instance has 0 to " +
                           std::to_string(count - 1));
}

template <class Parameter>
bool RuleAbout<Parameter>::isAbout(const libvarrow::RuleParameter& parameter) const {
  const auto* const found = dynamic_cast<const Parameter*>(&parameter);
  return found != nullptr && (!number_ || *number_ == found->number());
}

template <class Parameter>
ScheduleRule::Complaint RuleAbout<Parameter>::complaintAbout(
    const libvarrow::RuleParameter& parameter) const {
  return complaintOf(static_cast<const Parameter&>(parameter));
}

template class RuleAbout<JobParameter>;
template class RuleAbout<MachineParameter>;

}  // namespace jobshop
