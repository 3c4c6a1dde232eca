#include "rules/LatestFinish.h"

#include <string>

namespace jobshop {

void LatestFinish::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  JobRule::setBind(binder, bindFields);
  binder->about("Limits the end of jobs.");
  binder->field("limit", limit_).atLeast(0).about("The latest end of a job, in time units.");
}

ScheduleRule::Complaint LatestFinish::complaintOf(const JobParameter& parameter) const {
  const Time end = parameter.operations.empty() ? 0 : parameter.operations.back().end;
  if (end <= limit_) return std::nullopt;
  Json::Value complaint;
  complaint["job"] = Json::UInt64(parameter.job);
  complaint["found"] = Json::Int64(end);
  complaint["limit"] = Json::Int64(limit_);
  complaint["reasonStr"] = parameter.dumpStr() + " ends at " + std::to_string(end) + ", " +
                           std::to_string(end - limit_) + " after " + std::to_string(limit_);
  return complaint;
}

}  // namespace jobshop
