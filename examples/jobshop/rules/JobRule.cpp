#include "rules/JobRule.h"

#include <stdexcept>
#include <string>

#include "calendar/optional_field.h"

namespace jobshop {

void JobRule::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  ScheduleRule::setBind(binder, bindFields);
  bindOptional(binder, "job", job_);
}

void JobRule::requireFits(const Instance& instance) const {
  const std::size_t count = instance.jobs.size();
  if (!job_ || *job_ < count) return;
  throw std::runtime_error(dumpStr() + ": no job " + std::to_string(*job_) + ", the instance has " +
                           std::to_string(count) + ", from 0");
}

bool JobRule::isAbout(const libvarrow::RuleParameter& parameter) const {
  const auto* const found = dynamic_cast<const JobParameter*>(&parameter);
  return found != nullptr && (!job_ || *job_ == found->job);
}

ScheduleRule::Complaint JobRule::complaintAbout(const libvarrow::RuleParameter& parameter) const {
  return complaintAboutJob(static_cast<const JobParameter&>(parameter));
}

}  // namespace jobshop
