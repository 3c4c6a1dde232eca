#include "rules/MaxWait.h"

#include <string>

namespace jobshop {

void MaxWait::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  JobRule::setBind(binder, bindFields);
  binder->about("Limits the waiting times of jobs.");
  binder->field("limit", limit_)
      .atLeast(0)
      .about("The longest time between two operations of a job.");
}

ScheduleRule::Complaint MaxWait::complaintOf(const JobParameter& parameter) const {
  const auto& operations = parameter.operations;
  Time longest = 0;
  std::size_t next = 0;
  for (std::size_t i = 1; i < operations.size(); ++i) {
    const Time wait = operations[i].start - operations[i - 1].end;
    if (wait <= longest) continue;
    longest = wait;
    next = i;
  }
  if (longest <= limit_) return std::nullopt;
  Json::Value complaint;
  complaint["job"] = Json::UInt64(parameter.job);
  complaint["operation"] = Json::UInt64(operations[next].position);
  complaint["machine"] = Json::UInt64(operations[next].machine);
  complaint["found"] = Json::Int64(longest);
  complaint["limit"] = Json::Int64(limit_);
  complaint["reasonStr"] = parameter.dumpStr() + " waits " + std::to_string(longest) +
                           " for machine " + std::to_string(operations[next].machine) + " from " +
                           std::to_string(operations[next - 1].end) + " on, " +
                           std::to_string(longest - limit_) + " more than " +
                           std::to_string(limit_);
  return complaint;
}

}  // namespace jobshop
