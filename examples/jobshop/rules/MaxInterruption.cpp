#include "rules/MaxInterruption.h"

#include <string>

namespace jobshop {

namespace {

struct Interruption {
  ScheduledOperation operation;
  Span gap;

  Time length() const { return gap.end - gap.start; }
};

Interruption longestIn(const MachineParameter& parameter) {
  Interruption longest;
  for (const ScheduledOperation& operation : parameter.operations) {
    for (const Span& gap : parameter.calendar->gaps(operation.start, operation.end)) {
      const Interruption found{operation, gap};
      if (found.length() > longest.length()) longest = found;
    }
  }
  return longest;
}

}  // namespace

void MaxInterruption::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  MachineRule::setBind(binder, bindFields);
  binder->about("Limits the interruptions of operations.");
  binder->field("limit", limit_)
      .atLeast(0)
      .about("The longest time off within an operation; 0 allows none.");
}

ScheduleRule::Complaint MaxInterruption::complaintOf(const MachineParameter& parameter) const {
  const Interruption longest = longestIn(parameter);
  if (longest.length() <= limit_) return std::nullopt;
  const ScheduledOperation& operation = longest.operation;
  Json::Value complaint;
  complaint["machine"] = Json::UInt64(parameter.machine);
  complaint["job"] = Json::UInt64(operation.job);
  complaint["operation"] = Json::UInt64(operation.position);
  complaint["found"] = Json::Int64(longest.length());
  complaint["limit"] = Json::Int64(limit_);
  complaint["reasonStr"] =
      parameter.dumpStr() + " interrupts operation " + std::to_string(operation.position) +
      " of job " + std::to_string(operation.job) + " from " + std::to_string(longest.gap.start) +
      " to " + std::to_string(longest.gap.end) + ", for longer than " + std::to_string(limit_);
  return complaint;
}

}  // namespace jobshop
