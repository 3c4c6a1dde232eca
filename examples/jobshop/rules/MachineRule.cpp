#include "rules/MachineRule.h"

#include <stdexcept>
#include <string>

#include "calendar/optional_field.h"

namespace jobshop {

void MachineRule::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  ScheduleRule::setBind(binder, bindFields);
  bindOptional(binder, "machine", machine_);
}

void MachineRule::requireFits(const Instance& instance) const {
  const std::size_t count = instance.machineCount;
  if (!machine_ || *machine_ < count) return;
  throw std::runtime_error(dumpStr() + ": no machine " + std::to_string(*machine_) +
                           ", the instance has " + std::to_string(count) + ", from 0");
}

bool MachineRule::isAbout(const libvarrow::RuleParameter& parameter) const {
  const auto* const found = dynamic_cast<const MachineParameter*>(&parameter);
  return found != nullptr && (!machine_ || *machine_ == found->machine);
}

ScheduleRule::Complaint MachineRule::complaintAbout(
    const libvarrow::RuleParameter& parameter) const {
  return complaintAboutMachine(static_cast<const MachineParameter&>(parameter));
}

}  // namespace jobshop
